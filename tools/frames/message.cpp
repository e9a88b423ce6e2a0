// Messages between wire form and words. Unlike the tools' own reader, which takes any text for a
// frame, this one is strict: what is passed on is whole, so that one faulty tool cannot upset
// another. A frame is passed on as the characters that came.
#include "frames/message.h"

#include "link/message_codec.h"
#include "link/message_numbers.h"

#include <algorithm>
#include <array>
#include <utility>

namespace frames {

namespace {

bool isNibble(char c) {
  return c >= '0' && c <= '?';
}

ParsedText faulty(std::string_view fault) {
  return {nullptr, fault};
}

/// Reads parameters one after the other. Each step returns false when the payload does not hold
/// the parameter.
class ParameterReader {
 public:
  explicit ParameterReader(std::string_view payload) : cursor(payload) {}

  bool read(char letter, Parameters& into) {
    switch (letter) {
      case kIntegerParameter:
        return readInteger(into.values);
      case kListParameter:
        into.endsInPart = !readList(into.values);
        return !into.endsInPart;
      default:
        return readText(into.values);
    }
  }
  std::int64_t at() const { return cursor.at(); }

 private:
  bool readInteger(std::vector<Value>& values) {
    std::int32_t value = 0;
    const bool held = cursor.readInteger(value) == ReadResult::kRead;
    if (held) {
      values.emplace_back(value);
    }
    return held;
  }

  bool readText(std::vector<Value>& values) {
    const std::int64_t start = cursor.at() + kWordBytes;
    char* text = nullptr;
    const bool held = cursor.readString(text) == ReadResult::kRead;
    const std::unique_ptr<char[]> owner(text);
    if (held) {
      // The copy may hold NULs of its own: its size is what the cursor has moved.
      values.emplace_back(std::string(text, static_cast<std::size_t>(cursor.at() - start)));
    }
    return held;
  }

  bool readList(std::vector<Value>& values) {
    StringListNode* head = nullptr;
    const bool held = cursor.readList(head) == ReadResult::kRead;
    const std::unique_ptr<StringListNode, decltype(&freeStringList)> owner(head, &freeStringList);
    std::vector<std::string> items;
    for (const StringListNode* node = head; node != nullptr; node = node->next) {
      items.emplace_back(node->text, static_cast<std::size_t>(node->length));
    }
    values.emplace_back(std::move(items));
    return held;
  }

  DecodeCursor cursor;
};

}  // namespace

ParsedText parseText(std::string text) {
  const std::string_view characters(text.data(), text.size() - 1);
  if (!std::all_of(characters.begin(), characters.end(), isNibble)) {
    return faulty("characters that belong to no frame");
  }
  if (characters.size() % 2 != 0) {
    return faulty("half a byte at its end");
  }
  if (characters.size() / 2 < kFrameHeaderBytes) {
    return faulty("shorter than a header");
  }
  auto message = std::make_shared<Envelope>();
  message->payload.resize(characters.size() / 2 - kFrameHeaderBytes);
  message->header =
      decodeFrame(text.data(), static_cast<int>(characters.size()), message->payload).header;
  if (message->header.length != static_cast<int>(message->payload.size())) {
    return faulty("its length word does not match");
  }
  if (message->header.kind != kFrameDirected && message->header.kind != kFrameUndirected) {
    return faulty("neither directed nor undirected");
  }
  message->text = std::move(text);
  return {std::move(message), {}};
}

Message makeMessage(int sender, int dest, int tag, const ToolMessage& parameters) {
  std::array<char, kMaxPayloadBytes> payload;
  const MessageDirection direction =
      sender == NELKVUI ? MessageDirection::kSentByUi : MessageDirection::kReceivedByUi;
  const int length = std::max(0, EncodeMessage(tag, parameters, payload, direction));
  auto message = std::make_shared<Envelope>();
  message->header = {kFrameDirected, tag, sender, dest, length};
  message->payload.assign(payload.data(), static_cast<std::size_t>(length));
  message->text.resize(kMaxSentFrameText);
  const int used = encodeFrame(message->header, payload.data(), message->text);
  message->text.resize(static_cast<std::size_t>(std::max(used, 0)));
  return message;
}

std::string Parameters::text(std::size_t index) const {
  const auto* held = index < values.size() ? std::get_if<std::string>(&values[index]) : nullptr;
  return held != nullptr ? *held : std::string();
}

Parameters parametersOf(const Envelope& message) {
  Parameters parameters;
  ParameterReader reader(message.payload);
  const MessageRow* row = rowOf(message.header);
  for (const char letter : row != nullptr ? row->shape : std::string_view{}) {
    if (!reader.read(letter, parameters)) {
      parameters.isComplete = false;
      return parameters;
    }
  }
  parameters.bytesLeft = message.payload.size() - static_cast<std::size_t>(reader.at());
  return parameters;
}

bool goesToUi(const FrameHeader& header) {
  return header.sender != NELKVUI && (header.kind == kFrameUndirected || header.dest == NELKVUI);
}

std::string toolName(int toolType) {
  const char* known = toolTypeName(toolType);
  return known != nullptr ? known : "tool type " + std::to_string(toolType);
}

const MessageRow* rowOf(const FrameHeader& header) {
  const bool byUi = header.sender == NELKVUI;
  const MessageRow* row =
      findMessage(header.tag, byUi ? MessageDirection::kSentByUi : MessageDirection::kReceivedByUi);
  if (row == nullptr) {
    row = findMessage(header.tag,
                      byUi ? MessageDirection::kReceivedByUi : MessageDirection::kSentByUi);
  }
  return row;
}

std::string_view messageName(const FrameHeader& header) {
  const MessageRow* row = rowOf(header);
  return row != nullptr ? row->name : "unknown";
}

std::string messageLabel(const FrameHeader& header) {
  return std::string(messageName(header)) + "(" + std::to_string(header.tag) + ")";
}

}  // namespace frames
