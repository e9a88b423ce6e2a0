#include "postmaster/charset.h"

#include "link/message_numbers.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <functional>
#include <optional>
#include <utility>

namespace postmaster {

namespace {

constexpr char kWindowSet[] = "ISO-8859-1";

bool isAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

/// Whether the parameter `index` of the message is a path.
bool isPath(int tag, int index) {
  switch (tag) {
    case MSG_UI_FILE:
    case MSG_UI_DIRECTORY:
      return true;
    case MSG_T_ASK_FILE:
      return index == 1 || index == 2;
    case MSG_T_SYSTEM_OPENED:
      return index == 0;
    default:
      return false;
  }
}

/// Whether the window may send back the texts of the message one by one.
bool mayBeRepeated(int tag) {
  return tag == MSG_T_PROMPT || tag == MSG_T_ASK_STRING;
}

/// Makes another text of one; the letter is that of its parameter.
using Rewrite = std::function<std::string(char letter, std::string_view text)>;

/// Copies a payload parameter by parameter. Each step is false when the payload ends too early.
class PayloadCopy {
 public:
  PayloadCopy(std::string_view from, const Rewrite& change) : rest(from), rewrite(change) {}

  bool copy(char letter, bool isKept) {
    std::int32_t count = 0;
    switch (letter) {
      case kIntegerParameter:
        return copyWord(count);
      case kStringParameter:
        return copyText(letter, isKept);
      default:
        break;
    }
    bool isWhole = copyWord(count) && count >= 0;
    while (isWhole && count-- > 0) {
      isWhole = copyText(letter, isKept);
    }
    return isWhole;
  }
  bool isAtEnd() const { return rest.empty(); }
  std::string take() { return std::move(copied); }

 private:
  bool readWord(std::int32_t& value) {
    if (rest.size() < sizeof value) {
      return false;
    }
    std::memcpy(&value, rest.data(), sizeof value);
    rest.remove_prefix(sizeof value);
    return true;
  }
  void writeWord(std::int32_t value) {
    copied.append(reinterpret_cast<const char*>(&value), sizeof value);
  }
  bool copyWord(std::int32_t& value) {
    const bool isRead = readWord(value);
    writeWord(value);
    return isRead;
  }
  bool copyText(char letter, bool isKept) {
    std::int32_t length = 0;
    if (!readWord(length) || length < 0 || static_cast<std::size_t>(length) > rest.size()) {
      return false;
    }
    const std::string_view text = rest.substr(0, static_cast<std::size_t>(length));
    rest.remove_prefix(text.size());
    const std::string written = isKept ? std::string(text) : rewrite(letter, text);
    writeWord(static_cast<std::int32_t>(written.size()));
    copied += written;
    return true;
  }

  std::string_view rest;
  std::string copied;
  const Rewrite& rewrite;
};

/// The parameters of the message with each text that is no path rewritten; nothing when they are
/// not what its row promises.
std::optional<std::string> rewriteTexts(const Envelope& message, const Rewrite& rewrite) {
  const MessageRow* row = frames::rowOf(message.header);
  if (row == nullptr) {
    return std::nullopt;
  }
  PayloadCopy copy(message.payload, rewrite);
  int index = 0;
  for (const char letter : row->shape) {
    if (!copy.copy(letter, isPath(message.header.tag, index++))) {
      return std::nullopt;
    }
  }
  return copy.isAtEnd() ? std::optional(copy.take()) : std::nullopt;
}

/// The message with its texts rewritten; itself when nothing changes or it would be too long.
Message rewritten(const Message& message, const Rewrite& rewrite) {
  std::optional<std::string> payload = rewriteTexts(*message, rewrite);
  if (!payload || *payload == message->payload) {
    return message;
  }
  Message changed = withPayload(*message, std::move(*payload));
  return changed ? changed : message;
}

std::string wireString(std::string_view text) {
  const auto length = static_cast<std::int32_t>(text.size());
  return std::string(reinterpret_cast<const char*>(&length), sizeof length).append(text);
}

}  // namespace

std::unique_ptr<Converter> Converter::open(const std::string& to, const std::string& from) {
  const iconv_t opened = iconv_open((to + "//TRANSLIT").c_str(), from.c_str());
  if (std::bit_cast<std::intptr_t>(opened) == -1) {
    return nullptr;
  }
  return std::unique_ptr<Converter>(new Converter(Handle(opened)));
}

Converter::Result Converter::convert(std::string_view text) {
  Result result;
  std::string input(text);
  char* from = input.data();
  std::size_t left = input.size();
  std::array<char, 4096> buffer;
  iconv(handle.get(), nullptr, nullptr, nullptr, nullptr);
  while (left > 0) {
    char* to = buffer.data();
    std::size_t room = buffer.size();
    const bool isDone =
        iconv(handle.get(), &from, &left, &to, &room) != static_cast<std::size_t>(-1);
    const int why = isDone ? 0 : errno;
    result.text.append(buffer.data(), to);
    if (why == EINVAL) {
      result.tailBytes = left;
      break;
    }
    if (why == EILSEQ) {
      result.text += *from++;
      --left;
      result.isExact = false;
    }
  }
  return result;
}

Charset::Charset(std::unique_ptr<Converter> in, std::unique_ptr<Converter> out)
    : toLatin(std::move(in)), toTools(std::move(out)) {
  isMultibyte = toTools->convert("\xE9").text.size() > 1;
}

std::unique_ptr<Charset> Charset::open(const std::string& name) {
  auto in = Converter::open(kWindowSet, name);
  auto out = Converter::open(name, kWindowSet);
  return in && out ? std::unique_ptr<Charset>(new Charset(std::move(in), std::move(out))) : nullptr;
}

std::vector<Message> Charset::toWindow(const Message& message) {
  const FrameHeader& header = message->header;
  if (header.tag == MSG_T_TEXT) {
    return {logText(message)};
  }
  std::vector<Message> messages;
  if (const auto tail = tails.find(header.sender); tail != tails.end()) {
    Envelope text{header, {}, {}};
    text.header.tag = MSG_T_TEXT;
    messages.push_back(withPayload(text, wireString(tail->second)));
    tails.erase(tail);
  }
  std::set<std::string> plain;
  rewriteTexts(*message, [&](char letter, std::string_view text) {
    std::string seen = shown(text);
    if (letter == kListParameter && comesBack(seen, text)) {
      plain.insert(std::move(seen));
    }
    return std::string();
  });
  messages.push_back(rewritten(message, [&](char letter, std::string_view text) {
    if (letter == kListParameter) {
      return shownInList(text, plain);
    }
    std::string seen = shown(text);
    if (mayBeRepeated(header.tag) && !comesBack(seen, text)) {
      remember(seen, text);
    }
    return seen;
  }));
  return messages;
}

Message Charset::fromWindow(const Message& message) {
  return rewritten(message, [this](char, std::string_view text) { return forTools(text); });
}

Message Charset::logText(const Message& message) {
  const int sender = message->header.sender;
  return rewritten(message, [&](char, std::string_view text) {
    const std::string whole = std::exchange(tails[sender], {}).append(text);
    Converter::Result converted = toLatin->convert(whole);
    if (converted.tailBytes == 0) {
      tails.erase(sender);
    } else {
      tails[sender] = whole.substr(whole.size() - converted.tailBytes);
    }
    return std::move(converted.text);
  });
}

std::string Charset::shown(std::string_view text) {
  const Converter::Result converted = toLatin->convert(text);
  return converted.text + std::string(text.substr(text.size() - converted.tailBytes));
}

/// Whether what the window shows is enough to know what was sent.
bool Charset::comesBack(const std::string& seen, std::string_view sent) {
  return isAscii(seen) ? seen == sent : toTools->convert(seen).text == sent;
}

/// Two texts of a list never look the same unless they are, so that the choice tells which it was.
std::string Charset::shownInList(std::string_view text, const std::set<std::string>& plain) {
  const std::string similar = shown(text);
  const bool isPlain = comesBack(similar, text);
  std::string seen = similar;
  const auto isTaken = [&] {
    const auto known = sentTexts.find(seen);
    return (known != sentTexts.end() && known->second != text) ||
           (!isPlain && plain.contains(seen));
  };
  for (int number = 2; isTaken(); ++number) {
    seen = similar + " (" + std::to_string(number) + ")";
  }
  if (!isPlain || seen != similar) {
    remember(seen, text);
  }
  return seen;
}

void Charset::remember(const std::string& seen, std::string_view sent) {
  if (sentTexts.insert_or_assign(seen, std::string(sent)).second) {
    seenTexts.push_back(seen);
  }
  if (seenTexts.size() > kMaxRemembered) {
    sentTexts.erase(seenTexts.front());
    seenTexts.pop_front();
  }
}

std::string Charset::forTools(std::string_view text) {
  if (const auto sent = sentTexts.find(text); sent != sentTexts.end()) {
    return sent->second;
  }
  if (isMultibyte && !isAscii(text)) {
    // Bytes of a path that the user picked in a dialog of files are what the tools call it.
    const Converter::Result tried = toLatin->convert(text);
    if (tried.isExact && tried.tailBytes == 0) {
      return std::string(text);
    }
  }
  return toTools->convert(text).text;
}

}  // namespace postmaster
