#pragma once

#include <algorithm>
#include <cstdint>

/// Geometry in pixels, unless a user of these types says otherwise.

/// Marks a coordinate or an extent that was not given.
inline constexpr std::int32_t kNotSet = 0x8000;

struct zPoint {
  std::int32_t x = 0;
  std::int32_t y = 0;

  bool operator==(const zPoint&) const = default;
};

struct zDimension {
  std::int32_t width = 0;
  std::int32_t height = 0;

  bool operator==(const zDimension&) const = default;
};

/// A rectangle by its edges; right and bottom lie just outside.
struct zRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  zRect() = default;
  zRect(std::int32_t l, std::int32_t t, std::int32_t r, std::int32_t b)
      : left(l), top(t), right(r), bottom(b) {}
  zRect(zPoint pos, zDimension size)
      : left(pos.x), top(pos.y), right(pos.x + size.width), bottom(pos.y + size.height) {}

  std::int32_t width() const { return right - left; }
  std::int32_t height() const { return bottom - top; }
  zPoint pos() const { return {left, top}; }
  zDimension size() const { return {width(), height()}; }
  /// The record that stands for "everything" where an operation says so.
  bool isZero() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
  void moveBy(std::int32_t dx, std::int32_t dy) {
    left += dx;
    right += dx;
    top += dy;
    bottom += dy;
  }

  bool operator==(const zRect&) const = default;
};

/// The place nearest to `pos` at which something of `size` lies inside `outer`; what is too large
/// begins at 0.
inline zPoint keptInside(zPoint pos, zDimension size, zDimension outer) {
  return {std::max(std::min(pos.x, outer.width - size.width), 0),
          std::max(std::min(pos.y, outer.height - size.height), 0)};
}

/// `size` with one pixel at least either way: X has no empty windows.
inline zDimension notEmpty(zDimension size) {
  return {std::max(size.width, 1), std::max(size.height, 1)};
}
