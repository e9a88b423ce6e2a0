// The wire's characters. Both loops are plain and free of branches and of dependences from one
// round to the next, so that the compiler turns them into vector code; this file is built for it.

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "link/wire.h"

namespace {

constexpr unsigned kNibbleBits = 4;
constexpr unsigned kByteBits = 8;
constexpr unsigned kJoin = 1 + (1U << (kByteBits + kNibbleBits));
constexpr unsigned kNibbleMask = 0x0f;
constexpr unsigned kZero = '0';
constexpr unsigned kBothZeros = (kZero << kNibbleBits) + kZero;

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
