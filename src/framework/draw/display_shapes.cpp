#include "framework/draw/display.h"

#include <algorithm>
#include <array>
#include <cstdlib>

#include "framework/draw/draw_cache.h"
#include "framework/draw/x_coords.h"

#include <X11/Xlib.h>

// The shapes. Areas are filled with the brush, lines drawn with the pen; a hollow brush or a null
// pen leaves its half out.

namespace {

constexpr int kXAngleUnit = 64;  // X counts in 64ths of a degree
constexpr int kFullCircle = 360;
constexpr int kQuarterCircle = 90;

std::vector<XPoint> toXPoints(const std::vector<zPoint>& points, const zPoint& origin) {
  std::vector<XPoint> result;
  result.reserve(points.size());
  for (const zPoint& point : points) {
    result.push_back(
        {toXCoord(std::int64_t{point.x} + origin.x), toXCoord(std::int64_t{point.y} + origin.y)});
  }
  return result;
}

XRectangle toXRectangle(const zPoint& origin, int left, int top, std::int64_t width,
                        std::int64_t height) {
  return {toXCoord(std::int64_t{left} + origin.x), toXCoord(std::int64_t{top} + origin.y),
          toXExtent(width), toXExtent(height)};
}

XRectangle toXRectangle(const zPoint& origin, const zRect& rect) {
  return toXRectangle(origin, rect.left, rect.top, std::int64_t{rect.right} - rect.left,
                      std::int64_t{rect.bottom} - rect.top);
}

XArc arcIn(const XRectangle& box, int startAngle, int sweep) {
  return {box.x,
          box.y,
          box.width,
          box.height,
          static_cast<short>(startAngle * kXAngleUnit),
          static_cast<short>(sweep * kXAngleUnit)};
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

}  // namespace

int zDisplay::arcs(const zRect& box, int startAngle, int sweep, zArcKind kind) {
  if (!canDraw()) {
    return kNotReady;
  }
  XArc arc = arcIn(toXRectangle(origin, box), startAngle % kFullCircle,
                   std::clamp(sweep, -kFullCircle, kFullCircle));
  if (kind != kArcLine && !brush()->isHollow()) {
    XSetArcMode(xDisplay, brushGC.get(), kind == kArcPie ? ArcPieSlice : ArcChord);
    XFillArcs(xDisplay, xWindow, brushGC.get(), &arc, 1);
  }
  if (!pen()->isNull()) {
    XDrawArcs(xDisplay, xWindow, penGC.get(), &arc, 1);
  }
  return kDrawn;
}

int zDisplay::ellipse(const zRect& box) {
  return arcs(box, 0, kFullCircle, kArcPie);
}

int zDisplay::lineTo(int x, int y) {
  if (!canDraw()) {
    return kNotReady;
  }
  const zPoint end{x, y};
  if (!pen()->isNull() && !(end == currentPoint)) {
    auto points = toXPoints({currentPoint, end}, origin);
    XDrawLine(xDisplay, xWindow, penGC.get(), points[0].x, points[0].y, points[1].x, points[1].y);
  }
  currentPoint = end;
  return kDrawn;
}

int zDisplay::polyline(const std::vector<zPoint>& points) {
  if (!canDraw()) {
    return kNotReady;
  }
  if (!pen()->isNull() && !points.empty()) {
    auto xPoints = toXPoints(points, origin);
    XDrawLines(xDisplay, xWindow, penGC.get(), xPoints.data(), static_cast<int>(xPoints.size()),
               CoordModeOrigin);
  }
  return kDrawn;
}

int zDisplay::polygon(const std::vector<zPoint>& points) {
  if (!canDraw()) {
    return kNotReady;
  }
  if (!brush()->isHollow() && !points.empty()) {
    auto xPoints = toXPoints(points, origin);
    XFillPolygon(xDisplay, xWindow, brushGC.get(), xPoints.data(), static_cast<int>(xPoints.size()),
                 Complex, CoordModeOrigin);
  }
  if (!points.empty()) {
    std::vector<zPoint> outline = points;
    outline.push_back(points.front());
    polyline(outline);
  }
  return kDrawn;
}

int zDisplay::setFillRule(int rule) {
  if (!canDraw()) {
    return kNotReady;
  }
  XSetFillRule(xDisplay, brushGC.get(), rule == EvenOddRule ? EvenOddRule : WindingRule);
  return kDrawn;
}

int zDisplay::rectangle(int left, int top, int right, int bottom) {
  if (!canDraw()) {
    return kNotReady;
  }
  // Edges in the wrong order still draw, from the left top corner as given.
  const XRectangle box = toXRectangle(origin, left, top, std::abs(std::int64_t{right} - left - 1),
                                      std::abs(std::int64_t{bottom} - top - 1));
  if (!brush()->isHollow()) {
    XFillRectangle(xDisplay, xWindow, brushGC.get(), box.x, box.y, box.width, box.height);
  }
  if (!pen()->isNull()) {
    XDrawRectangle(xDisplay, xWindow, penGC.get(), box.x, box.y, box.width, box.height);
  }
  return kDrawn;
}

int zDisplay::roundRect(const zRect& rect, const zDimension& corner) {
  if (!canDraw()) {
    return kNotReady;
  }
  const int w = std::clamp(corner.width, 0, std::max(rect.width() - 1, 0));
  const int h = std::clamp(corner.height, 0, std::max(rect.height() - 1, 0));
  const zPoint far{rect.right - 1 - w, rect.bottom - 1 - h};
  const auto corners = [&](int x, int y, int quarter) {
    return arcIn(toXRectangle(origin, x, y, w, h), quarter * kQuarterCircle, kQuarterCircle);
  };
  std::array<XArc, 4> arcList{corners(far.x, rect.top, 0), corners(rect.left, rect.top, 1),
                              corners(rect.left, far.y, 2), corners(far.x, far.y, 3)};
  const int dx = w / 2;
  const int dy = h / 2;
  if (!brush()->isHollow()) {
    XSetArcMode(xDisplay, brushGC.get(), ArcPieSlice);
    XFillArcs(xDisplay, xWindow, brushGC.get(), arcList.data(), static_cast<int>(arcList.size()));
    fillRect({rect.left + dx, rect.top, rect.right - dx, rect.bottom});
    fillRect({rect.left, rect.top + dy, rect.right, rect.bottom - dy});
  }
  if (!pen()->isNull()) {
    XDrawArcs(xDisplay, xWindow, penGC.get(), arcList.data(), static_cast<int>(arcList.size()));
    polyline({{rect.left + dx, rect.top}, {rect.right - 1 - dx, rect.top}});
    polyline({{rect.left + dx, rect.bottom - 1}, {rect.right - 1 - dx, rect.bottom - 1}});
    polyline({{rect.left, rect.top + dy}, {rect.left, rect.bottom - 1 - dy}});
    polyline({{rect.right - 1, rect.top + dy}, {rect.right - 1, rect.bottom - 1 - dy}});
  }
  return kDrawn;
}

int zDisplay::fillRect(const zRect& rect, zBrush* withBrush) {
  if (!canDraw()) {
    return kNotReady;
  }
  const ziBrushInForce inForce(*this, withBrush);
  if (!brush()->isHollow()) {
    const XRectangle box = toXRectangle(origin, rect);
    XFillRectangle(xDisplay, xWindow, brushGC.get(), box.x, box.y, box.width, box.height);
  }
  return kDrawn;
}

int zDisplay::frameRect(const zRect& rect, zBrush* withBrush) {
  if (!canDraw()) {
    return kNotReady;
  }
  const ziBrushInForce inForce(*this, withBrush);
  if (!brush()->isHollow()) {
    const XRectangle box =
        toXRectangle(origin, {rect.left, rect.top, rect.right + 1, rect.bottom + 1});
    XDrawRectangle(xDisplay, xWindow, brushGC.get(), box.x, box.y, box.width, box.height);
  }
  return kDrawn;
}

int zDisplay::setPixel(int x, int y, const zColor& colour) {
  if (!canDraw()) {
    return kNotReady;
  }
  zColor wanted = colour;
  XSetForeground(xDisplay, penGC.get(), ziDrawCache::instance().colours().pixel(wanted));
  const auto at = toXPoints({{x, y}}, origin).front();
  XDrawPoint(xDisplay, xWindow, penGC.get(), at.x, at.y);
  XSetForeground(xDisplay, penGC.get(), pen()->pixel());
  return kDrawn;
}

int zDisplay::getPixel(int /*x*/, int /*y*/, zColor& /*colour*/) {
  return kNotReady;
}

int zDisplay::drawBitmap(Pixmap pixmap, const zRect& source, const zPoint& to) {
  if (!canDraw()) {
    return kNotReady;
  }
  if (pixmap != 0) {
    const XRectangle from = toXRectangle({}, source);
    const XRectangle dest = toXRectangle(origin, to.x, to.y, 0, 0);
    XCopyArea(xDisplay, pixmap, xWindow, textGC.get(), from.x, from.y, from.width, from.height,
              dest.x, dest.y);
  }
  return kDrawn;
}

int zDisplay::copyIcon(Pixmap pixmap, Pixmap mask, const zDimension& size, const zPoint& to) {
  if (!canDraw()) {
    return kNotReady;
  }
  if (mask == 0 || pixmap == 0) {
    return drawBitmap(pixmap, zRect({}, size), to);
  }
  // A context of its own: the mask takes the place of the clip region.
  XGCValues values{};
  values.graphics_exposures = False;
  const ziGcHandle gc(xDisplay, XCreateGC(xDisplay, xWindow, GCGraphicsExposures, &values));
  const XRectangle dest = toXRectangle(origin, to.x, to.y, size.width, size.height);
  XSetClipMask(xDisplay, gc.get(), mask);
  XSetClipOrigin(xDisplay, gc.get(), dest.x, dest.y);
  XCopyArea(xDisplay, pixmap, xWindow, gc.get(), 0, 0, dest.width, dest.height, dest.x, dest.y);
  return kDrawn;
}
