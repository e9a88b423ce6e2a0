// Reads and writes payloads by itself: a fault of the codec under test shows as a wrong message.

#include "tests/support/message.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace {

const MessageRow* findRow(int tag, MessageDirection preferred) {
  using enum MessageDirection;
  const MessageRow* const row = findMessage(tag, preferred);
  return row != nullptr ? row
                        : findMessage(tag, preferred == kSentByUi ? kReceivedByUi : kSentByUi);
}

std::string quoted(std::string_view text) {
  constexpr std::string_view kNamed = "\n\t\"\\";
  std::string result = "\"";
  for (const char c : text) {
    if (const std::size_t at = kNamed.find(c); at != std::string_view::npos) {
      result += {'\\', "nt\"\\"[at]};
    } else {
      result += static_cast<unsigned char>(c) < ' ' ? "\\" + std::to_string(c) : std::string(1, c);
    }
  }
  return result + '"';
}

/// Takes parameters out of a payload.
class Reader {
 public:
  explicit Reader(std::string_view payload) : rest(payload) {}

  Parameter parameter(char kind) {
    if (kind != kListParameter) {
      return kind == kIntegerParameter ? Parameter(word()) : Parameter(text());
    }
    Parameter::List list;
    for (int count = word(); count > 0 && isSound; --count) {
      list.emplace_back(text());
    }
    return list;
  }
  /// Whether all was there and nothing is left.
  bool isAtEnd() const { return isSound && rest.empty(); }

 private:
  std::string_view take(std::size_t count) {
    isSound = isSound && count <= rest.size();
    const std::string_view taken = isSound ? rest.substr(0, count) : std::string_view();
    rest.remove_prefix(taken.size());
    return taken;
  }
  int word() {
    std::int32_t value = 0;
    take(sizeof value).copy(reinterpret_cast<char*>(&value), sizeof value);
    return value;
  }
  // A negative count is one that is much too large.
  std::string_view text() { return take(static_cast<std::size_t>(word())); }

  std::string_view rest;
  bool isSound = true;
};

}  // namespace

std::string Parameter::describe() const {
  std::string result;
  for (const std::string& text : texts) {
    result += (result.empty() ? "" : ", ") + quoted(text);
  }
  return kind == kIntegerParameter ? std::to_string(number)
         : kind == kListParameter  ? "[" + result + "]"
                                   : result;
}

std::string Parameter::payload() const {
  std::string result = kind == kIntegerParameter ? wireWord(number) : "";
  result += kind == kListParameter ? wireWord(static_cast<int>(texts.size())) : "";
  for (const std::string& text : texts) {
    result += wireString(text);
  }
  return result;
}

std::string describe(const Message& message) {
  const MessageRow* const row = findRow(message.tag, MessageDirection::kSentByUi);
  std::string result = std::to_string(message.tag) + " ";
  result += row != nullptr ? row->name : "unknown message";
  for (const Parameter& parameter : message.parameters) {
    result += " " + parameter.describe();
  }
  return message.fault.empty() ? result : result + " (" + message.fault + ")";
}

std::string toWire(const Message& message, MessageDirection preferred) {
  const MessageRow* const row = findRow(message.tag, preferred);
  std::string shape;
  std::string payload;
  for (const Parameter& parameter : message.parameters) {
    shape += parameter.kind;
    payload += parameter.payload();
  }
  if (shape != (row != nullptr ? row->shape : "")) {
    throw std::invalid_argument("wrong parameters: " + describe(message));
  }
  const auto length = static_cast<int>(payload.size());
  return wireText({message.kind, message.tag, message.sender, message.dest, length}, payload);
}

Message fromWire(std::string_view frame, MessageDirection preferred) {
  std::string binary(std::max<std::size_t>(frame.size() / 2, sizeof(FrameHeader)), '\0');
  NibbleDecode(frame.data(), binary.data(), static_cast<int>(frame.size()));
  FrameHeader header;
  std::memcpy(&header, binary.data(), sizeof header);
  const std::string_view payload = std::string_view(binary).substr(sizeof header);
  Message message{header.kind, header.tag, header.sender, header.dest};
  Reader reader(payload);
  const MessageRow* const row = findRow(message.tag, preferred);
  for (const char kind : row != nullptr ? row->shape : std::string_view()) {
    message.parameters.push_back(reader.parameter(kind));
  }
  if (!reader.isAtEnd() || payload.size() != static_cast<std::size_t>(header.length)) {
    message.fault = "length word " + std::to_string(header.length) + ", payload " + quoted(payload);
  }
  return message;
}

std::string wireWord(std::int32_t value) {
  return {reinterpret_cast<const char*>(&value), sizeof value};
}

std::string wireString(std::string_view text) {
  return wireWord(static_cast<std::int32_t>(text.size())).append(text);
}

std::string wireText(const FrameHeader& header, std::string_view payload) {
  std::string binary(reinterpret_cast<const char*>(&header), sizeof header);
  binary += payload;
  std::string text(2 * binary.size() + 1, '\0');
  NibbleEncode(binary.data(), text.data(), static_cast<int>(binary.size()));
  return text;
}
