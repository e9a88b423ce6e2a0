#include "tests/support/message.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "link/message_codec.h"

namespace {

const MessageRow* findRow(int tag, MessageDirection preferred) {
  using enum MessageDirection;
  const MessageRow* const row = findMessage(tag, preferred);
  return row != nullptr ? row
                        : findMessage(tag, preferred == kSentByUi ? kReceivedByUi : kSentByUi);
}

Parameter parameterOf(const ToolMessage& message, int index, char kind) {
  if (kind == kIntegerParameter) {
    return message.number(index);
  }
  if (kind == kStringParameter) {
    return message.text(index);
  }
  Parameter::List list;
  for (const StringListNode* node = message.list(index); node != nullptr; node = node->next) {
    list.emplace_back(node->text);
  }
  return list;
}

}  // namespace

std::string Parameter::describe() const {
  std::string result;
  for (const std::string& text : texts) {
    result += (result.empty() ? "" : ", ") + testing::PrintToString(text);
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
  return result;
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
  std::vector<char> payload(frame.size());
  const auto [header, carried, bytes] =
      decodeFrame(frame.data(), static_cast<int>(frame.size()), payload);
  Message message{header.kind, header.tag, header.sender, header.dest};
  const MessageRow* const row = findRow(message.tag, preferred);
  const MessageDirection direction = row != nullptr ? row->direction : preferred;
  ToolMessage decoded;
  if (header.length != bytes - kFrameHeaderBytes ||
      DecodeMessage(message.tag, payload.data(), header.length, &decoded, direction) != kDecodeOk) {
    throw std::invalid_argument("wrong payload: " + describe(message));
  }
  for (int i = 0; row != nullptr && i < std::ssize(row->shape); ++i) {
    message.parameters.push_back(parameterOf(decoded, i, row->shape[static_cast<std::size_t>(i)]));
  }
  FreeMessage(message.tag, &decoded, direction);
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
