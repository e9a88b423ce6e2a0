// The wire's characters, frames in them, and the receive buffer of frames.
//
// Both loops over characters are plain and free of branches and of dependences from one round to
// the next, so that the compiler turns them into vector code; this file is built for it. Both
// directions check every size: what is too long is not built, what a frame announces but does not
// carry is never read. A payload goes straight between its wire form and the buffer of whoever
// asks.
//
// Dropping a frame from the buffer only moves the start, and a scan goes on where the last one
// ended, so that a large backlog costs no more than its bytes.

#include "link/wire.h"

#include <algorithm>
#include <bit>
#include <cstring>

static_assert(std::endian::native == std::endian::little,
              "words cross the wire as they stand in memory");
static_assert(sizeof(FrameHeader) == kFrameHeaderBytes);

namespace {

constexpr unsigned kNibbleBits = 4;
constexpr unsigned kByteBits = 8;
constexpr unsigned kJoin = 1 + (1U << (kByteBits + kNibbleBits));
constexpr unsigned kNibbleMask = 0x0f;
constexpr unsigned kZero = '0';
constexpr unsigned kBothZeros = (kZero << kNibbleBits) + kZero;

constexpr int kHeaderCharacters = 2 * kFrameHeaderBytes;
constexpr std::size_t kFirstCapacity = 4096;

}  // namespace

int NibbleEncode(const char* in, char* out, int n) {
  for (std::ptrdiff_t i = 0; i < n; ++i) {
    const auto byte = static_cast<std::uint8_t>(in[i]);
    out[2 * i] = static_cast<char>(kZero + (byte >> kNibbleBits));
    out[2 * i + 1] = static_cast<char>(kZero + (byte & kNibbleMask));
  }
  out[2 * static_cast<std::ptrdiff_t>(n)] = '\0';
  return 2 * n;
}

int NibbleDecode(const char* in, char* out, int n) {
  const int bytes = n / 2;
  for (std::ptrdiff_t i = 0; i < bytes; ++i) {
    // Both characters as one word, the second in its high half; the product puts there sixteen
    // times the first one besides, modulo 256.
    std::uint16_t pair = 0;
    std::memcpy(&pair, in + 2 * i, sizeof pair);
    const auto product = static_cast<std::uint16_t>(pair * kJoin);
    out[i] = static_cast<char>((product >> kByteBits) - kBothZeros);
  }
  return bytes;
}

int encodeFrame(const FrameHeader& header, const void* payload, std::span<char> text) {
  const int carried = payload != nullptr ? header.length : 0;
  if (carried < 0 || carried > kMaxPayloadBytes) {
    return -1;
  }
  const int characters = 2 * (kFrameHeaderBytes + carried);
  if (text.size() < static_cast<std::size_t>(characters) + 1) {
    return -1;
  }
  NibbleEncode(reinterpret_cast<const char*>(&header), text.data(), kFrameHeaderBytes);
  if (carried > 0) {
    NibbleEncode(static_cast<const char*>(payload), text.data() + kHeaderCharacters, carried);
  }
  return characters + 1;
}

Frame decodeFrame(const char* text, int textLength, std::span<char> payload) {
  Frame frame;
  if (textLength <= 0) {
    return frame;
  }
  const auto characters = static_cast<int>(strnlen(text, static_cast<std::size_t>(textLength)));
  frame.binaryBytes = characters / 2;
  NibbleDecode(text, reinterpret_cast<char*>(&frame.header),
               std::min(characters, kHeaderCharacters));
  const auto room = static_cast<int>(std::min<std::size_t>(payload.size(), kPayloadBufferBytes));
  const int carried = std::min({frame.header.length, frame.binaryBytes - kFrameHeaderBytes, room});
  if (carried > 0) {
    NibbleDecode(text + kHeaderCharacters, payload.data(), 2 * carried);
    frame.carried = static_cast<std::size_t>(carried);
  }
  return frame;
}

FrameBuffer::FrameBuffer()
    : data(std::make_unique<char[]>(kFirstCapacity)), capacity(kFirstCapacity) {}

void FrameBuffer::FrameBufferAppend(const char* bytes, int n) {
  if (n <= 0) {
    return;
  }
  const auto count = static_cast<std::size_t>(n);
  if (used + count > capacity) {
    auto larger = std::make_unique<char[]>(used + count);
    std::memcpy(larger.get(), data.get() + start, used);
    data = std::move(larger);
    capacity = used + count;
    start = 0;
  } else if (start + used + count > capacity) {
    std::memmove(data.get(), data.get() + start, used);
    start = 0;
  }
  std::memcpy(data.get() + start + used, bytes, count);
  used += count;
}

const char* FrameBuffer::FrameBufferPeek() {
  const char* const first = data.get() + start;
  const void* const end = std::memchr(first + scanned, '\0', used - scanned);
  if (end == nullptr) {
    scanned = used;
    return nullptr;
  }
  scanned = static_cast<std::size_t>(static_cast<const char*>(end) - first);
  return first;
}

std::size_t FrameBuffer::frameLength() {
  return FrameBufferPeek() != nullptr ? scanned + 1 : 0;
}

void FrameBuffer::FrameBufferDrop() {
  const std::size_t length = frameLength();
  start += length;
  used -= length;
  if (length > 0) {
    scanned = 0;
  }
}
