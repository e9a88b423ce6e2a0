// Messages between wire form and words. Unlike the tools' own reader, which takes any text for a
// frame, the Postmaster is strict: what it forwards is whole, so that one faulty tool cannot upset
// another. A frame is forwarded as the characters that came.
#include "postmaster/message.h"

#include "link/message_codec.h"
#include "link/message_numbers.h"

#include <algorithm>
#include <array>
#include <utility>

namespace postmaster {

namespace {

bool isNibble(char c) {
  return c >= '0' && c <= '?';
}

ParsedText faulty(std::string_view fault) {
  return {nullptr, fault};
}

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

Message ownMessage(int tag, int dest, const ToolMessage& parameters) {
  std::array<char, kMaxPayloadBytes> payload;
  const int length =
      std::max(0, EncodeMessage(tag, parameters, payload, MessageDirection::kReceivedByUi));
  auto message = std::make_shared<Envelope>();
  message->header = {kFrameDirected, tag, NELMPM, dest, length};
  message->payload.assign(payload.data(), static_cast<std::size_t>(length));
  message->text.resize(kMaxSentFrameText);
  const int used = encodeFrame(message->header, payload.data(), message->text);
  message->text.resize(static_cast<std::size_t>(std::max(used, 0)));
  return message;
}

Message withPayload(const Envelope& original, std::string payload) {
  auto message = std::make_shared<Envelope>(Envelope{original.header, std::move(payload), {}});
  message->header.length = static_cast<int>(message->payload.size());
  message->text.resize(kMaxSentFrameText);
  const int used = encodeFrame(message->header, message->payload.data(), message->text);
  message->text.resize(static_cast<std::size_t>(std::max(used, 0)));
  return used < 0 ? nullptr : message;
}

void FrameSplitter::append(std::string_view bytes) {
  if (discarding) {
    const std::size_t end = bytes.find('\0');
    discarding = end == std::string_view::npos;
    bytes.remove_prefix(discarding ? bytes.size() : end + 1);
  }
  buffer.FrameBufferAppend(bytes.data(), static_cast<int>(bytes.size()));
}

FrameSplitter::Item FrameSplitter::next(std::string& text) {
  const std::size_t length = buffer.frameLength();
  if (length > kMaxFrameText) {
    buffer.FrameBufferDrop();
    return Item::kOversized;
  }
  if (length > 0) {
    text.assign(buffer.FrameBufferPeek(), length);
    buffer.FrameBufferDrop();
    return Item::kFrame;
  }
  if (buffer.bytesStored() >= kMaxFrameText) {
    buffer = FrameBuffer();
    discarding = true;
    return Item::kOversized;
  }
  return Item::kNone;
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

std::string messageLabel(const FrameHeader& header) {
  const MessageRow* row = rowOf(header);
  const std::string name = row != nullptr ? std::string(row->name) : "unknown";
  return name + "(" + std::to_string(header.tag) + ")";
}

}  // namespace postmaster
