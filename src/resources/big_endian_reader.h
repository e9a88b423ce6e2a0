#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// Reads big-endian numbers and texts from bytes of any content. Beyond the end everything is 0.
class BigEndianReader {
 public:
  explicit BigEndianReader(std::span<const std::uint8_t> data) : bytes(data) {}

  std::uint8_t u8() {
    if (atEnd()) {
      exhausted = true;
      return 0;
    }
    return bytes[at++];
  }
  std::uint32_t u32() {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < sizeof value; ++i) {
      value = value << kByteBits | u8();
    }
    return value;
  }
  /// A byte that tells whether there is a text; if so its length and its bytes, or as many as there
  /// are.
  std::optional<std::string> text() {
    if (u8() == 0) {
      return std::nullopt;
    }
    const std::size_t length = u32();
    const std::size_t present = std::min(length, bytes.size() - at);
    exhausted = exhausted || present < length;
    const auto taken = bytes.subspan(at, present);
    at += present;
    return std::string(taken.begin(), taken.end());
  }

  bool atEnd() const { return at == bytes.size(); }
  /// Whether more was asked for than there is.
  bool isExhausted() const { return exhausted; }

 private:
  static constexpr unsigned kByteBits = 8;

  std::span<const std::uint8_t> bytes;
  std::size_t at = 0;
  bool exhausted = false;
};
