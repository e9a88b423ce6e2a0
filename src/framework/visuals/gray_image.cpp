#include "framework/visuals/bevel.h"

#include <functional>
#include <vector>

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
