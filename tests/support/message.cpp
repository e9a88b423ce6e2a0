#include "tests/support/message.h"

#include <array>
#include <cstdio>
#include <deque>
#include <ostream>
#include <stdexcept>

#include "link/message_codec.h"
#include "link/tool_message.h"

namespace {

MessageDirection opposite(MessageDirection direction) {
  return direction == MessageDirection::kSentByUi ? MessageDirection::kReceivedByUi
                                                  : MessageDirection::kSentByUi;
}

const MessageRow* findRow(int tag, MessageDirection preferred) {
  const MessageRow* const row = findMessage(tag, preferred);
  return row != nullptr ? row : findMessage(tag, opposite(preferred));
}

std::string nameOf(int tag) {
  const MessageRow* const row = findRow(tag, MessageDirection::kSentByUi);
  return row != nullptr ? std::string(row->name) : "unknown message";
}

std::string shapeOf(const std::vector<Parameter>& parameters) {
  std::string shape;
  for (const Parameter& parameter : parameters) {
    shape += parameter.kind();
  }
  return shape;
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      result += "\\n";
    } else if (c == '\t') {
      result += "\\t";
    } else if (c == '"' || c == '\\') {
      result += {'\\', c};
    } else if (byte < ' ') {
      std::array<char, 5> escape = {};
      std::snprintf(escape.data(), escape.size(), "\\x%02x", byte);
      result += escape.data();
    } else {
      result += c;
    }
  }
  return result + '"';
}

/// A record for the encoder and what its words point to.
class OutgoingRecord {
 public:
  explicit OutgoingRecord(const std::vector<Parameter>& parameters) {
    for (std::size_t i = 0; i < parameters.size(); ++i) {
      set(static_cast<int>(i), parameters[i]);
    }
  }

  ToolMessage record;

 private:
  void set(int index, const Parameter& parameter) {
    switch (parameter.kind()) {
      case kIntegerParameter:
        record.setNumber(index, parameter.number());
        break;
      case kStringParameter:
        record.setText(index, texts.emplace_back(parameter.text()).c_str());
        break;
      default: {
        StringList& list = lists.emplace_back();
        for (const std::string& item : parameter.list()) {
          list.append(item);
        }
        record.setList(index, list.head());
      }
    }
  }

  std::deque<std::string> texts;
  std::deque<StringList> lists;
};

Parameter incomingParameter(const ToolMessage& record, int index, char kind) {
  if (kind == kIntegerParameter) {
    return record.number(index);
  }
  if (kind == kStringParameter) {
    const char* const text = record.text(index);
    return text != nullptr ? Parameter(text) : Parameter("");
  }
  Parameter::List list;
  for (const StringListNode* node = record.list(index); node != nullptr; node = node->next) {
    list.emplace_back(node->text);
  }
  return list;
}

}  // namespace

std::string Parameter::text() const {
  const auto* const held = std::get_if<std::string>(&value);
  return held != nullptr ? *held : std::string();
}

int Parameter::number() const {
  const int* const held = std::get_if<int>(&value);
  return held != nullptr ? *held : 0;
}

Parameter::List Parameter::list() const {
  const List* const held = std::get_if<List>(&value);
  return held != nullptr ? *held : List();
}

char Parameter::kind() const {
  constexpr std::array kKinds = {kIntegerParameter, kStringParameter, kListParameter};
  return kKinds[value.index()];
}

std::string describe(const Parameter& parameter) {
  if (parameter.kind() == kIntegerParameter) {
    return std::to_string(parameter.number());
  }
  if (parameter.kind() == kStringParameter) {
    return quoted(parameter.text());
  }
  std::string result = "[";
  for (const std::string& item : parameter.list()) {
    result += (result.size() > 1 ? ", " : "") + quoted(item);
  }
  return result + "]";
}

Parameter Message::parameter(std::size_t index) const {
  return index < parameters.size() ? parameters[index] : Parameter("");
}

std::string describe(const Message& message) {
  std::string result = std::to_string(message.tag) + " " + nameOf(message.tag);
  for (const Parameter& parameter : message.parameters) {
    result += " " + describe(parameter);
  }
  return message.fault.empty() ? result : result + " (" + message.fault + ")";
}

std::ostream& operator<<(std::ostream& out, const Message& message) {
  return out << describe(message);
}

std::string toWire(const Message& message, MessageDirection preferred) {
  const MessageRow* const row = findRow(message.tag, preferred);
  const std::string_view shape = row != nullptr ? row->shape : std::string_view();
  if (shape != shapeOf(message.parameters)) {
    throw std::invalid_argument(describe(message) + " needs parameters " + std::string(shape));
  }
  const OutgoingRecord outgoing(message.parameters);
  std::array<char, kMaxPayloadBytes> payload = {};
  const int length =
      row != nullptr ? EncodeMessage(message.tag, outgoing.record, payload, row->direction) : 0;
  std::string text(kMaxSentFrameText, '\0');
  const FrameHeader header{message.kind, message.tag, message.sender, message.dest, length};
  const int written = length < 0 ? -1 : encodeFrame(header, payload.data(), text);
  if (written < 0) {
    throw std::invalid_argument("too long for a frame: " + std::to_string(message.tag));
  }
  text.resize(static_cast<std::size_t>(written));
  return text;
}

Message fromWire(std::string_view frame, MessageDirection preferred) {
  const std::string text(frame);
  std::array<char, kMaxReceivedFrameBytes> binary = {};
  const Frame taken = decodeFrame(text.c_str(), static_cast<int>(text.size()), binary);
  const FrameHeader& header = taken.header;
  Message message{header.kind, header.tag, header.sender, header.dest};
  if (taken.payload.size() != static_cast<std::size_t>(header.length) ||
      taken.binaryBytes != kFrameHeaderBytes + header.length) {
    message.fault = "length word " + std::to_string(header.length) + " in a frame of " +
                    std::to_string(taken.binaryBytes) + " bytes";
    return message;
  }
  const MessageRow* const row = findRow(message.tag, preferred);
  const MessageDirection direction = row != nullptr ? row->direction : preferred;
  ToolMessage record;
  const int result =
      DecodeMessage(message.tag, taken.payload.data(), header.length, &record, direction);
  if (result != kDecodeOk) {
    message.fault = "payload of " + std::to_string(header.length) +
                    " bytes does not decode: " + std::to_string(result);
  } else if (row != nullptr) {
    for (std::size_t i = 0; i < row->shape.size(); ++i) {
      message.parameters.push_back(incomingParameter(record, static_cast<int>(i), row->shape[i]));
    }
  }
  FreeMessage(message.tag, &record, direction);
  return message;
}
