#pragma once

#include "framework/draw/x_handles.h"
#include "support/geometry.h"

/// An area made of rectangles; a value with the operations of X regions. Coordinates outside the
/// 16 bits of X are pulled to their limits.
class zRegion {
 public:
  zRegion();
  explicit zRegion(const zRect& rect);
  zRegion(const zRegion& other);
  zRegion(zRegion&&) noexcept = default;
  zRegion& operator=(const zRegion& other);
  zRegion& operator=(zRegion&&) noexcept = default;
  ~zRegion() = default;

  void add(const zRect& rect);
  void intersect(const zRegion& other);
  bool isEmpty() const;
  bool contains(const zPoint& point) const;
  /// The smallest rectangle round the region.
  zRect clipBox() const;
  Region get() const { return area.get(); }

 private:
  ziRegionHandle area;
};
