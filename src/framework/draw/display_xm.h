#pragma once

#include <cstdint>
#include <vector>

#include "framework/draw/display.h"

#include <X11/Xlib.h>

/// What the sources of zDisplay share: coordinates as X takes them, moved by the display's origin.

inline std::vector<XPoint> toXPoints(const std::vector<zPoint>& points, const zPoint& origin) {
  std::vector<XPoint> result;
  result.reserve(points.size());
  for (const zPoint& point : points) {
    result.push_back(
        {toXCoord(std::int64_t{point.x} + origin.x), toXCoord(std::int64_t{point.y} + origin.y)});
  }
  return result;
}

inline XRectangle toXRectangle(const zPoint& origin, int left, int top, std::int64_t width,
                               std::int64_t height) {
  return {toXCoord(std::int64_t{left} + origin.x), toXCoord(std::int64_t{top} + origin.y),
          toXExtent(width), toXExtent(height)};
}

inline XRectangle toXRectangle(const zPoint& origin, const zRect& rect) {
  return toXRectangle(origin, rect.left, rect.top, std::int64_t{rect.right} - rect.left,
                      std::int64_t{rect.bottom} - rect.top);
}

/// Has a brush in force as long as it lives; null changes nothing.
class ziBrushInForce {
 public:
  ziBrushInForce(zDisplay& on, zBrush* brush) : display(on), isPushed(brush != nullptr) {
    if (isPushed) {
      display.setBrush(brush);
    }
  }
  ziBrushInForce(const ziBrushInForce&) = delete;
  ziBrushInForce& operator=(const ziBrushInForce&) = delete;
  ~ziBrushInForce() {
    if (isPushed) {
      display.popBrush();
    }
  }

 private:
  zDisplay& display;
  bool isPushed;
};
