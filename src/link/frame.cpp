// Frames between binary and wire form. Both directions check every size: what is too long is not
// built, what a frame announces but does not carry is never read.

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "link/wire.h"

static_assert(std::endian::native == std::endian::little,
              "words cross the wire as they stand in memory");
static_assert(sizeof(FrameHeader) == kFrameHeaderBytes);

int encodeFrame(const FrameHeader& header, const void* payload, std::span<char> text) {
  const int carried = payload != nullptr ? header.length : 0;
  if (carried < 0 || carried > kMaxPayloadBytes) {
    return -1;
  }
  const int binaryBytes = kFrameHeaderBytes + carried;
  if (text.size() < 2 * static_cast<std::size_t>(binaryBytes) + 1) {
    return -1;
  }
  std::array<char, kMaxFrameBytes> binary;
  std::memcpy(binary.data(), &header, kFrameHeaderBytes);
  if (carried > 0) {
    std::memcpy(binary.data() + kFrameHeaderBytes, payload, static_cast<std::size_t>(carried));
  }
  return NibbleEncode(binary.data(), text.data(), binaryBytes) + 1;
}

Frame decodeFrame(const char* text, int textLength, std::span<char> binary) {
  Frame frame;
  if (textLength <= 0 || binary.empty()) {
    return frame;
  }
  const std::size_t characters =
      std::min(strnlen(text, static_cast<std::size_t>(textLength)), 2 * binary.size());
  frame.binaryBytes = NibbleDecode(text, binary.data(), static_cast<int>(characters));

  const int headerBytes = std::min(frame.binaryBytes, kFrameHeaderBytes);
  std::memcpy(&frame.header, binary.data(), static_cast<std::size_t>(headerBytes));
  const int carried = std::min(frame.header.length, frame.binaryBytes - kFrameHeaderBytes);
  if (carried > 0) {
    frame.payload = binary.subspan(kFrameHeaderBytes, static_cast<std::size_t>(carried));
  }
  return frame;
}
