#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

/// Reads little-endian numbers from bytes of any content. Beyond the end everything reads as 0.
class ziByteReader {
 public:
  explicit ziByteReader(std::span<const std::uint8_t> data) : bytes(data) {}

  std::uint8_t u8() { return atEnd() ? std::uint8_t{0} : bytes[at++]; }
  std::uint16_t u16() {
    const unsigned low = u8();
    return static_cast<std::uint16_t>(low | static_cast<unsigned>(u8()) << kByteBits);
  }
  std::uint32_t u32() {
    const std::uint32_t low = u16();
    return low | static_cast<std::uint32_t>(u16()) << (2 * kByteBits);
  }
  std::int32_t i32() { return static_cast<std::int32_t>(u32()); }

  void skip(std::uint64_t count) {
    at += static_cast<std::size_t>(std::min<std::uint64_t>(count, remaining()));
  }
  void seek(std::size_t position) { at = std::min(position, bytes.size()); }
  /// The next `count` bytes, or as many as there are.
  std::span<const std::uint8_t> take(std::size_t count) {
    const auto taken = bytes.subspan(at, std::min(count, remaining()));
    at += taken.size();
    return taken;
  }

  std::size_t position() const { return at; }
  std::size_t size() const { return bytes.size(); }
  std::size_t remaining() const { return bytes.size() - at; }
  bool atEnd() const { return at == bytes.size(); }

 private:
  static constexpr unsigned kByteBits = 8;

  std::span<const std::uint8_t> bytes;
  std::size_t at = 0;
};
