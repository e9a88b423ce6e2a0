// Receive buffer of frames. Dropping only moves the start, and a scan goes on where the last one
// ended, so that a large backlog costs no more than its bytes.

#include "link/frame_buffer.h"

#include <cstring>

namespace {

constexpr std::size_t kFirstCapacity = 4096;

}  // namespace

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
