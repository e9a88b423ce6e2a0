#include "postmaster/message.h"

#include "link/message_numbers.h"

namespace postmaster {

Message ownMessage(int tag, int dest, const ToolMessage& parameters) {
  return frames::makeMessage(NELMPM, dest, tag, parameters);
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

}  // namespace postmaster
