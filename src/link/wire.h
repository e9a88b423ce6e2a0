#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

/// The frame on the wire: five little-endian 32-bit words and a payload, each byte written as two
/// characters of 0123456789:;<=>? (high nibble first), ended by one NUL.

/// The five words that open a frame's binary form.
struct FrameHeader {
  std::int32_t kind = 0;
  std::int32_t tag = 0;
  std::int32_t sender = 0;
  std::int32_t dest = 0;
  std::int32_t length = 0;  ///< bytes of payload, as announced
};

inline constexpr int kFrameHeaderBytes = 20;
inline constexpr int kMaxFrameBytes = 16392;  ///< largest binary form that is sent
inline constexpr int kMaxPayloadBytes = kMaxFrameBytes - kFrameHeaderBytes;  ///< largest sent
inline constexpr int kWordBytes = 4;  ///< of an integer and of each count
inline constexpr int kMaxSentText =
    kMaxPayloadBytes - kWordBytes;  ///< bytes of a text that goes alone
inline constexpr int kMaxSentFrameText = 2 * kMaxFrameBytes + 1;  ///< its wire form, with NUL
inline constexpr int kMaxFrameText = 32868;  ///< largest wire form that is received, with NUL
inline constexpr int kMaxReceivedFrameBytes = (kMaxFrameText - 1) / 2;  ///< its binary form
inline constexpr int kEncodeBufferBytes = 16416;                        ///< size of g_EncodeBuffer

/// Size of the buffer in which a received payload is handed on. No received payload is longer,
/// whatever its header announces.
inline constexpr int kPayloadBufferBytes = kEncodeBufferBytes;
static_assert(kMaxReceivedFrameBytes - kFrameHeaderBytes <= kPayloadBufferBytes);

/// Writes 2n characters and a NUL to `out` (2n + 1 bytes) and returns 2n.
int NibbleEncode(const char* in, char* out, int n);

/// Turns the n characters at `in` into n / 2 bytes at `out`, an odd last one ignored. Characters
/// outside the sixteen give the byte of plain 8-bit arithmetic. Returns n / 2.
int NibbleDecode(const char* in, char* out, int n);

/// Writes header and payload in wire form to `text`, with the NUL. A null `payload` leaves the
/// payload out whatever the header announces. Returns the characters written, NUL included, or -1
/// with nothing written when the frame exceeds kMaxFrameBytes or its text `text`.
int encodeFrame(const FrameHeader& header, const void* payload, std::span<char> text);

/// A frame taken apart.
struct Frame {
  FrameHeader header;       ///< words that the text is too short for are made of zero bytes
  std::size_t carried = 0;  ///< bytes of payload that were stored
  int binaryBytes = 0;      ///< bytes of the binary form, header included
};

/// Takes apart the wire form at `text`, which ends at its NUL or after `textLength` characters.
/// Stores in `payload` what the text carries of the announced length, as far as there is room.
Frame decodeFrame(const char* text, int textLength, std::span<char> payload);

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
