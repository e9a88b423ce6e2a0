#include "framework/visuals/bevel.h"

#include <algorithm>
#include <functional>
#include <vector>

#include "framework/draw/display.h"
#include "framework/draw/displays.h"
#include "framework/draw/pictures.h"
#include "framework/draw/screen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace {

using Points = std::vector<zPoint>;

struct ImageFree {
  void operator()(XImage* image) const { XDestroyImage(image); }
};

// As the eye weighs the three components.
int brightness(const zColor& colour) {
  constexpr int kRed = 30;
  constexpr int kGreen = 59;
  constexpr int kBlue = 11;
  return (colour.red() * kRed + colour.green() * kGreen + colour.blue() * kBlue) /
         (kRed + kGreen + kBlue);
}

bool isDark(const zColor& colour) {
  constexpr int kBrightest = 0x90;
  return brightness(colour) < kBrightest;
}

Points pointsWhere(XImage& image, const std::function<bool(unsigned long)>& holds) {
  Points points;
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      if (holds(XGetPixel(&image, x, y))) {
        points.push_back({x, y});
      }
    }
  }
  return points;
}

Points drawnPoints(XImage& image) {
  const zColorCache& colours = ziDrawCache::instance().colours();
  Points dark =
      pointsWhere(image, [&](unsigned long pixel) { return isDark(colours.colourOf(pixel)); });
  if (!dark.empty()) {
    return dark;
  }
  const unsigned long paper = XGetPixel(&image, 0, 0);
  return pointsWhere(image, [paper](unsigned long pixel) { return pixel != paper; });
}

}  // namespace

void drawLines(zDisplay& display, const zColor& colour, const std::vector<zPoint>& points) {
  zPen pen(colour);
  display.pushPen(&pen);
  display.polyline(points);
  display.popPen();
}

void drawText(zDisplay& display, const zPoint& at, const RWCString& text) {
  display.setTextMode(kTextTransparent);
  display.text(at.x, at.y, text.c_str());
  display.setTextMode(kTextOpaque);
}

void drawBevel(zDisplay& display, const zRect& rect, zBevel bevel, int lines) {
  const bool raised = bevel == zBevel::kRaised;
  for (int line = 0; line < lines; ++line) {
    const zRect edge = insetRect(rect, line);
    const int right = edge.right - 1;
    const int bottom = edge.bottom - 1;
    drawLines(display, raised ? kBevelLight : kBevelDark,
              {{edge.left, bottom}, {edge.left, edge.top}, {right, edge.top}});
    drawLines(display, raised ? kBevelDark : kBevelLight,
              {{right, edge.top}, {right, bottom}, {edge.left, bottom}});
  }
}

void drawFrame(zDisplay& display, const zRect& rect, const zColor& colour) {
  const int right = rect.right - 1;
  const int bottom = rect.bottom - 1;
  drawLines(display, colour,
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

std::unique_ptr<zBitmap> makeGrayImage(const zBitmap& image) {
  Display* display = theScreen().display;
  if (display == nullptr || image.isEmpty()) {
    return nullptr;
  }
  const std::unique_ptr<XImage, ImageFree> pixels(
      XGetImage(display, image.pixmap(), 0, 0, static_cast<unsigned>(image.width()),
                static_cast<unsigned>(image.height()), AllPlanes, ZPixmap));
  if (pixels == nullptr) {
    return nullptr;
  }
  const Points points = drawnPoints(*pixels);
  auto gray = std::make_unique<zBitmap>(image.width(), image.height());
  zBitmapDisplay canvas(*gray);
  canvas.lock();
  fillArea(canvas, zRect({}, gray->size()), kFaceColour);
  for (const zPoint& point : points) {
    canvas.setPixel(point.x + 1, point.y + 1, kBevelLight);
  }
  for (const zPoint& point : points) {
    canvas.setPixel(point.x, point.y, kBevelDark);
  }
  canvas.unlock();
  return gray;
}
