// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.

#include <algorithm>
#include <array>
#include <cstdlib>

#include "framework/draw/display_xm.h"
#include "framework/draw/displays.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"

#include <X11/Xutil.h>

namespace {

constexpr int kXAngleUnit = 64;  // X counts in 64ths of a degree
constexpr int kFullCircle = 360;
constexpr int kQuarterCircle = 90;

XArc arcIn(const XRectangle& box, int startAngle, int sweep) {
  return {box.x,
          box.y,
          box.width,
          box.height,
          static_cast<short>(startAngle * kXAngleUnit),
          static_cast<short>(sweep * kXAngleUnit)};
}

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

int zDisplay::centerText(const zRect& rect, const char* string, int length) {
  zDimension size;
  textSize(size, string, length);
  // A text that fits exactly is moved by one pixel, which is intended.
  const auto half = [](int room) { return room / 2 == 0 ? 1 : room / 2; };
  return text(rect.left + half(rect.width() - size.width),
              rect.top + half(rect.height() - size.height), string, length);
}

void zDisplay::pushFont(const zFontSpec& spec) {
  fontObjects.push(std::make_unique<zFont>(spec).release());
  sendFont();
}

void zDisplay::popFont() {
  const std::unique_ptr<zFont> last(fontObjects.pop());
  sendFont();
}

int zDisplay::setRop(int mode) {
  const int before = std::exchange(ropMode, mode);
  if (hasContexts()) {
    XSetFunction(xDisplay, penGC.get(), mode);
    XSetFunction(xDisplay, brushGC.get(), mode);
  }
  return before;
}

void zDisplay::setClipOrigin(const zPoint& clipOrigin) {
  for (const GC gc : {penGC.get(), brushGC.get(), textGC.get()}) {
    if (gc != nullptr) {
      XSetClipOrigin(xDisplay, gc, clipOrigin.x, clipOrigin.y);
    }
  }
}

void zDisplay::flush() {
  if (xDisplay != nullptr) {
    XFlush(xDisplay);
  }
}

int zDisplay::getPixel(int /*x*/, int /*y*/, zColor& /*colour*/) {
  return kNotReady;
}

int zReadableDisplay::getPixel(int x, int y, zColor& colour) {
  if (!canDraw()) {
    return kNotReady;
  }
  XImage* image = XGetImage(xDisplay, xWindow, x + currentOrigin().x, y + currentOrigin().y, 1, 1,
                            AllPlanes, ZPixmap);
  if (image == nullptr) {
    return kNotReady;
  }
  colour = ziDrawCache::instance().colours().colourOf(XGetPixel(image, 0, 0));
  XDestroyImage(image);
  return kDrawn;
}

zDialogUnit::zDialogUnit(int x, int y, zDisplay& display) : zLogMeasure(x, y) {
  zDimension reference;
  display.lock();
  display.textSize(reference, kDialogUnitText, kDialogUnitTextLength);
  display.unlock();
  convert(reference);
}
