#include "tests/support/message.h"

#include <stdexcept>

#include "frames/description.h"

namespace {

FrameHeader headerOf(const Message& message) {
  return {message.kind, message.tag, message.sender, message.dest, 0};
}

struct WireForm {
  std::string operator()(std::int32_t number) const { return wireWord(number); }
  std::string operator()(const std::string& text) const { return wireString(text); }
  std::string operator()(const Parameter::List& list) const {
    std::string all = wireWord(static_cast<int>(list.size()));
    for (const std::string& text : list) {
      all += wireString(text);
    }
    return all;
  }
};

}  // namespace

std::string Parameter::payload() const {
  return std::visit(WireForm(), *this);
}

std::string describe(const Message& message) {
  std::string result = std::to_string(message.tag) + " ";
  result += frames::messageName(headerOf(message));
  for (const Parameter& parameter : message.parameters) {
    result += " " + frames::describeValue(parameter, frames::Style::kFull);
  }
  return result;
}

std::string toWire(const Message& message) {
  constexpr char kLetters[] = {kIntegerParameter, kStringParameter, kListParameter};
  FrameHeader header = headerOf(message);
  const MessageRow* const row = frames::rowOf(header);
  std::string shape;
  std::string payload;
  for (const Parameter& parameter : message.parameters) {
    shape += kLetters[parameter.index()];
    payload += parameter.payload();
  }
  if (shape != (row != nullptr ? row->shape : "")) {
    throw std::invalid_argument("wrong parameters: " + describe(message));
  }
  header.length = static_cast<int>(payload.size());
  return wireText(header, payload);
}

Message fromWire(const std::string& frame) {
  const auto [envelope, fault] = frames::parseText(frame + '\0');
  if (envelope == nullptr || !frames::parametersOf(*envelope).areGood()) {
    throw std::invalid_argument("wrong frame: " + frame + std::string(fault));
  }
  const FrameHeader& header = envelope->header;
  Message message{header.kind, header.tag, header.sender, header.dest};
  for (const frames::Value& value : frames::parametersOf(*envelope).values) {
    std::visit([&](const auto& held) { message.parameters.emplace_back(held); }, value);
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
