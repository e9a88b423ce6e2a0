// A prompt is digits between two bytes that hardly any command prints; what only begins so is text.
// The bytes differ, so that what a command printed at its end cannot take the prompt behind it for
// its own. A dialogue has no such sign: it is known by the end of the text, which is why it is
// sure only when nothing follows. The text since the last prompt or answer is kept for that, as
// much of its end as a question shows; that a menu began is remembered, as menus may be longer.

#include "gdb/console/splitter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace gdb {

namespace {

constexpr char kOpening = '\x1e';
constexpr char kClosing = '\x1f';
constexpr std::size_t kMaxDigits = 9;  // any number of these fits
constexpr std::size_t kMaxQuestion = 2000;
constexpr std::string_view kMenuBegin = "[0] cancel\n";

/// Ends of the last line that are a dialogue whatever stands before them.
struct Ending {
  std::string_view text;
  Dialogue dialogue;
};
constexpr std::array kEndings{
    Ending{"(y or n) ", Dialogue::kYesNo}, Ending{"([y] or n) ", Dialogue::kYesDefault},
    Ending{"(y or [n]) ", Dialogue::kNoDefault},
    Ending{"--Type <RET> for more, q to quit, c to continue without paging--", Dialogue::kPager}};

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// What stands at the beginning of a text that begins with the opening byte.
struct Beginning {
  enum class Kind { kText, kPrompt, kUnfinished };
  Kind kind = Kind::kText;
  std::size_t length = 1;
  unsigned number = 0;
};

Beginning beginningOf(std::string_view text) {
  const std::string_view digits = text.substr(1, kMaxDigits);
  const auto end = std::ranges::find_if_not(digits, isDigit);
  const auto count = static_cast<std::size_t>(end - digits.begin());
  const std::size_t length = 1 + count + 1;
  if (text.size() < length) {
    return {.kind = Beginning::Kind::kUnfinished, .length = text.size()};
  }
  Beginning prompt{.kind = Beginning::Kind::kPrompt, .length = length};
  std::from_chars(digits.data(), digits.data() + count, prompt.number);
  const bool isPrompt = count > 0 && text.starts_with(ConsoleSplitter::promptOf(prompt.number));
  return isPrompt ? prompt : Beginning{};
}

std::string_view lastLine(std::string_view text) {
  return text.substr(text.rfind('\n') + 1);  // all of it without a line end: npos + 1 is 0
}

/// At most that much of the end of a text, from the beginning of a line where there is one.
std::string_view tailOf(std::string_view text, std::size_t size) {
  if (text.size() <= size) {
    return text;
  }
  text.remove_prefix(text.size() - size);
  const std::size_t end = text.find('\n');
  const auto isContinuation = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; };
  return end == std::string_view::npos
             ? std::string_view(std::ranges::find_if_not(text, isContinuation), text.end())
             : text.substr(end + 1);
}

}  // namespace

std::string ConsoleSplitter::promptOf(unsigned number) {
  return kOpening + std::to_string(number) + kClosing;
}

std::vector<ConsolePiece> ConsoleSplitter::feed(std::string_view bytes) {
  std::vector<ConsolePiece> pieces;
  std::string all = std::move(held) + std::string(bytes);
  std::string_view rest = all;
  std::size_t textSize = 0;  // of what at the beginning of the rest is known to be text
  held.clear();
  const auto takeText = [&] {
    if (textSize > 0) {
      remember(rest.substr(0, textSize));
      pieces.push_back({.text = std::string(rest.substr(0, textSize))});
      rest.remove_prefix(std::exchange(textSize, 0));
    }
  };
  while (textSize < rest.size()) {
    textSize = std::min(rest.find(kOpening, textSize), rest.size());
    if (textSize == rest.size()) {
      break;
    }
    const Beginning beginning = beginningOf(rest.substr(textSize));
    if (beginning.kind == Beginning::Kind::kText) {
      textSize += beginning.length;
      continue;
    }
    takeText();
    if (beginning.kind == Beginning::Kind::kUnfinished) {
      held = rest;
      return pieces;
    }
    answered();
    pieces.push_back({.prompt = beginning.number});
    rest.remove_prefix(beginning.length);
  }
  takeText();
  return pieces;
}

void ConsoleSplitter::remember(std::string_view text) {
  const std::size_t old = recent.size();
  recent += text;
  const std::size_t from = old - std::min(old, kMenuBegin.size());
  for (std::size_t at = recent.find(kMenuBegin, from); at != std::string::npos;
       at = recent.find(kMenuBegin, at + 1)) {
    hasMenu = hasMenu || at == 0 || recent[at - 1] == '\n';
  }
  constexpr std::size_t kKept = 2 * kMaxQuestion;
  if (recent.size() > kKept) {
    recent.erase(0, recent.size() - kKept);
  }
}

Dialogue ConsoleSplitter::dialogue() const {
  const std::string_view line = lastLine(recent);
  const auto ending = std::ranges::find_if(
      kEndings, [line](const Ending& candidate) { return line.ends_with(candidate.text); });
  if (ending != kEndings.end()) {
    return ending->dialogue;
  }
  if (hasMenu && line == "> ") {
    return Dialogue::kMenu;
  }
  if (line == ">>> " || line == "... ") {
    return Dialogue::kPython;
  }
  const bool isDepth = line.find_first_not_of(" >") == std::string_view::npos;
  return isDepth && line.ends_with('>') ? Dialogue::kMoreLines : Dialogue::kNone;
}

std::string ConsoleSplitter::question() const {
  switch (dialogue()) {
    case Dialogue::kNone:
      return {};
    case Dialogue::kYesNo:
    case Dialogue::kYesDefault:
    case Dialogue::kNoDefault:
    case Dialogue::kMenu:
      return std::string(tailOf(recent, kMaxQuestion));
    case Dialogue::kMoreLines:
    case Dialogue::kPython:
    case Dialogue::kPager:
      break;
  }
  return std::string(tailOf(lastLine(recent), kMaxQuestion));
}

std::string ConsoleSplitter::heading() const {
  std::string_view before = recent;
  before.remove_suffix(lastLine(before).size());
  if (dialogue() == Dialogue::kMenu) {
    before = before.substr(0, before.rfind(kMenuBegin));
  }
  if (!before.ends_with(":\n")) {
    return {};
  }
  before.remove_suffix(1);
  return std::string(tailOf(lastLine(before), kMaxQuestion));
}

void ConsoleSplitter::answered() {
  recent.clear();
  hasMenu = false;
}

}  // namespace gdb
