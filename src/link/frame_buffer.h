#pragma once

#include <cstddef>
#include <memory>

/// Assembles frames from a byte stream: bytes go in as they were read, frames are looked at and
/// dropped whole. Starts at 4096 bytes, grows by need only and never shrinks.
class FrameBuffer {
 public:
  FrameBuffer();

  /// Adds `n` bytes behind those stored.
  void FrameBufferAppend(const char* bytes, int n);

  /// The first frame, ended by its NUL, or null while none is whole. Valid until the next append
  /// or drop.
  const char* FrameBufferPeek();

  /// Removes the first frame; nothing changes while none is whole.
  void FrameBufferDrop();

  /// Bytes of the first frame with its NUL, 0 while none is whole.
  std::size_t frameLength();

  std::size_t bytesStored() const { return used; }
  std::size_t bytesReserved() const { return capacity; }

 private:
  std::unique_ptr<char[]> data;
  std::size_t capacity;
  std::size_t start = 0;    // of the bytes stored; what lies before was dropped
  std::size_t used = 0;     // bytes stored, from `start`
  std::size_t scanned = 0;  // of these, known to hold no NUL
};
