#include "framework/visuals/bevel.h"

#include <algorithm>

#include "framework/draw/display.h"

namespace {

void drawCorner(zDisplay& display, const zColor& colour, const std::vector<zPoint>& points) {
  zPen pen(colour);
  display.pushPen(&pen);
  display.polyline(points);
  display.popPen();
}

}  // namespace

void drawBevel(zDisplay& display, const zRect& rect, zBevel bevel, int lines) {
  const bool raised = bevel == zBevel::kRaised;
  for (int line = 0; line < lines; ++line) {
    const zRect edge = insetRect(rect, line);
    const int right = edge.right - 1;
    const int bottom = edge.bottom - 1;
    drawCorner(display, raised ? kBevelLight : kBevelDark,
               {{edge.left, bottom}, {edge.left, edge.top}, {right, edge.top}});
    drawCorner(display, raised ? kBevelDark : kBevelLight,
               {{right, edge.top}, {right, bottom}, {edge.left, bottom}});
  }
}

void drawFrame(zDisplay& display, const zRect& rect, const zColor& colour) {
  const int right = rect.right - 1;
  const int bottom = rect.bottom - 1;
  drawCorner(display, colour,
             {{rect.left, rect.top},
              {right, rect.top},
              {right, bottom},
              {rect.left, bottom},
              {rect.left, rect.top}});
}

void fillArea(zDisplay& display, const zRect& rect, const zColor& colour) {
  zBrush brush(colour);
  display.fillRect(rect, &brush);
}

zRect insetRect(const zRect& rect, int by) {
  const int x = std::min(by, rect.width() / 2);
  const int y = std::min(by, rect.height() / 2);
  return {rect.left + x, rect.top + y, rect.right - x, rect.bottom - y};
}

zPoint centredIn(const zRect& outer, const zDimension& inner) {
  return {outer.left + (outer.width() - inner.width) / 2,
          outer.top + (outer.height() - inner.height) / 2};
}
