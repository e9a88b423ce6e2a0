#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

/// X counts coordinates in 16 bits; what lies outside is pulled to the limits instead of coming
/// round on the other side.

inline short toXCoord(std::int64_t value) {
  using Limits = std::numeric_limits<short>;
  return static_cast<short>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
}

/// A negative extent becomes 0.
inline unsigned short toXExtent(std::int64_t value) {
  return static_cast<unsigned short>(
      std::clamp<std::int64_t>(value, 0, std::numeric_limits<unsigned short>::max()));
}
