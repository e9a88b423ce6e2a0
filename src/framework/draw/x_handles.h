#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>

#include "framework/draw/xtfwd.h"
#include "support/geometry.h"

/// Owners of what the X library hands out. Each frees its thing when it goes; the display must
/// still be open then.

/// Owner of an id or pointer that is freed together with its display.
template <class Id, void (*Free)(Display*, Id)>
class ziXHandle {
 public:
  ziXHandle() = default;
  ziXHandle(Display* display, Id id) : owner(display), value(id) {}
  ziXHandle(ziXHandle&& other) noexcept
      : owner(other.owner), value(std::exchange(other.value, Id{})) {}
  ziXHandle& operator=(ziXHandle&& other) noexcept {
    std::swap(owner, other.owner);
    std::swap(value, other.value);
    return *this;
  }
  ziXHandle(const ziXHandle&) = delete;
  ziXHandle& operator=(const ziXHandle&) = delete;
  ~ziXHandle() { reset(); }

  Id get() const { return value; }
  explicit operator bool() const { return value != Id{}; }
  /// Gives up ownership.
  Id release() { return std::exchange(value, Id{}); }
  void reset() {
    if (value != Id{}) {
      Free(owner, std::exchange(value, Id{}));
    }
  }

 private:
  Display* owner = nullptr;
  Id value{};
};

void ziFreeGc(Display* display, GC gc);
void ziFreePixmap(Display* display, Pixmap pixmap);

using ziGcHandle = ziXHandle<GC, ziFreeGc>;
using ziPixmapHandle = ziXHandle<Pixmap, ziFreePixmap>;

struct ziRegionFree {
  void operator()(Region region) const;
};
using ziRegionHandle = std::unique_ptr<struct _XRegion, ziRegionFree>;

/// The owner of an XFontStruct; see x_font_xm.h.
class ziXFont;

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

/// An area made of rectangles; a value with the operations of X regions. Coordinates outside the
/// 16 bits of X are pulled to their limits.
class zRegion {
 public:
  zRegion();
  explicit zRegion(const zRect& rect);
  zRegion(const zRegion& other);
  zRegion(zRegion&&) noexcept = default;
  zRegion& operator=(zRegion&&) noexcept = default;
  ~zRegion() = default;

  void add(const zRect& rect);
  void intersect(const zRegion& other);
  /// The smallest rectangle round the region.
  zRect clipBox() const;
  Region get() const { return area.get(); }

 private:
  ziRegionHandle area;
};
