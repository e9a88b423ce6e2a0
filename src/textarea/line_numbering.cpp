#include "textarea/line_numbering.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

std::string linePrefix(int number) {
  std::array<char, 32> formatted{};
  std::snprintf(formatted.data(), formatted.size(), "%6d: ", number);
  return std::string(formatted.data(), kPrefixWidth);
}

namespace {

constexpr std::size_t kNumberWidth = 6;
constexpr int kLargestNumber = 999999;  // the largest that leaves room for the colon and the blank

/// Prefixes of successive lines. Numbering a large log is bound by their making, so the next one is
/// counted up in place.
class RunningPrefix {
 public:
  explicit RunningPrefix(int first) : number(first), text(linePrefix(first)) {}

  void appendTo(std::string& log) {
    log.append(text);
    ++number;
    if (number <= 0 || number > kLargestNumber || !countUp()) {
      text = linePrefix(number);
    }
  }

 private:
  bool countUp() {
    for (std::size_t place = kNumberWidth; place-- > 0;) {
      if (text[place] != '9') {
        text[place] = text[place] == ' ' ? '1' : static_cast<char>(text[place] + 1);
        return true;
      }
      text[place] = '0';
    }
    return false;
  }

  int number;
  std::string text;
};

/// Whether `line` begins with the prefix of a number up to `greatest`.
bool isPrefix(std::string_view line, int greatest) {
  if (line.size() < kPrefixWidth) {
    return false;
  }
  const std::string_view prefix = line.substr(0, kPrefixWidth);
  const std::size_t blanks = std::min(prefix.find_first_not_of(' '), kNumberWidth);
  int number = 0;
  const char* end = prefix.data() + prefix.size();
  const char* digits = prefix.data() + blanks;
  const char* behind = std::from_chars(digits, end, number).ptr;
  const std::string_view rest(behind, static_cast<std::size_t>(end - behind));
  const auto width = static_cast<std::size_t>(behind - prefix.data());
  // What follows the digits ends where a longer number has no room for it.
  return number > 0 && number <= greatest && *digits != '0' && width >= kNumberWidth &&
         (blanks == 0 || width == kNumberWidth) &&
         rest == std::string_view(": ").substr(0, rest.size());
}

/// Appends the line of `text` at `start`, which moves behind it. False when no line feed ended it.
bool appendLine(std::string_view text, std::size_t& start, std::string& to) {
  const std::size_t feed = text.find('\n', start);
  const bool isEnded = feed != std::string_view::npos;
  const std::size_t end = isEnded ? feed + 1 : text.size();
  to += text.substr(start, end - start);
  start = end;
  return isEnded;
}

}  // namespace

std::string expandForLog(std::string_view text, LogCounters& counters) {
  std::string expanded;
  expanded.reserve(text.size());
  for (const char c : text) {
    expanded += c;
    ++counters.textEnd;
    if (c != '\n') {
      continue;
    }
    ++counters.lineCount;
    if (counters.numbering) {
      counters.textEnd += kPrefixWidth;
      expanded += linePrefix(counters.lineCount);
    }
  }
  return expanded;
}

std::string addLineNumbers(std::string_view text, LogCounters& counters) {
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  std::string numbered;
  numbered.reserve(text.size() + lines * kPrefixWidth);
  // This counter starts at firstLineNumber and expandForLog counts on from lineCount: after a Clear
  // the two give different numbers to the same line. Intended.
  RunningPrefix prefix(counters.firstLineNumber);
  std::size_t start = 0;
  while (appendLine(text, start, numbered)) {
    prefix.appendTo(numbered);
    counters.textEnd += kPrefixWidth;
  }
  return numbered;
}

std::string removeLineNumbers(std::string_view text, LogCounters& counters) {
  std::string plain;
  plain.reserve(text.size());
  std::size_t start = 0;
  while (appendLine(text, start, plain)) {
    if (isPrefix(text.substr(start), counters.lineCount)) {
      start += kPrefixWidth;
      counters.textEnd -= kPrefixWidth;
    }
  }
  return plain;
}
