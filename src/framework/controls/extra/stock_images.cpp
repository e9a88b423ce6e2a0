// Part of the framework's interface that this program does not use; compiled, its behaviour is not
// under test. The pictures of the three stock buttons, drawn as pen strokes into bitmaps of one bit
// a pixel.

#include "framework/controls/widgets_xm.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr int kWidth = 48;
constexpr int kHeight = 32;
constexpr int kBits = 8;
constexpr int kRowBytes = kWidth / kBits;
constexpr double kPenRadius = 1.8;
constexpr std::size_t kMaxPoints = 8;

struct Point {
  double x;
  double y;
};

// A line through points; a single point is a dot.
struct Stroke {
  std::size_t count;
  std::array<Point, kMaxPoints> points;
};

struct StockImage {
  int id;
  const char* name;
  std::array<Stroke, 2> strokes;
};

constexpr StockImage kImages[] = {
    {1, "BorlandOK", {{{3, {{{14, 16}, {21, 24}, {35, 7}}}}, {0, {}}}}},
    {2, "BorlandCancel", {{{2, {{{15, 6}, {33, 26}}}}, {2, {{{33, 6}, {15, 26}}}}}}},
    {998,
     "BorlandHelp",
     {{{8, {{{17, 10}, {19, 6}, {24, 4}, {29, 6}, {31, 10}, {29, 14}, {24, 18}, {24, 21}}}},
       {1, {{{24, 27}}}}}}},
};

double distanceToSegment(Point p, Point a, Point b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double square = dx * dx + dy * dy;
  const double along = ((p.x - a.x) * dx + (p.y - a.y) * dy) / (square > 0 ? square : 1);
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(p.x - (a.x + t * dx), p.y - (a.y + t * dy));
}

bool isInked(const Stroke& stroke, Point p) {
  for (std::size_t i = 0; i < stroke.count; ++i) {
    const Point& end = stroke.points[std::min(i + 1, stroke.count - 1)];
    if (distanceToSegment(p, stroke.points[i], end) <= kPenRadius) {
      return true;
    }
  }
  return false;
}

using Bitmap = std::array<unsigned char, std::size_t{kRowBytes} * kHeight>;

Bitmap draw(const StockImage& image) {
  Bitmap bits{};
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      const Point p{static_cast<double>(x), static_cast<double>(y)};
      if (isInked(image.strokes[0], p) || isInked(image.strokes[1], p)) {
        auto& byte = bits[static_cast<unsigned>(y * kRowBytes + x / kBits)];
        byte = static_cast<unsigned char>(byte | (1U << (x % kBits)));
      }
    }
  }
  return bits;
}

// The toolkit keeps the images, so they and their bits live to the end of the program.
bool installImages(Display* display) {
  static std::array<Bitmap, std::size(kImages)> bitmaps;
  bool all = true;
  for (std::size_t i = 0; i < std::size(kImages); ++i) {
    bitmaps[i] = draw(kImages[i]);
    XImage* image =
        XCreateImage(display, DefaultVisual(display, DefaultScreen(display)), 1, XYBitmap, 0,
                     reinterpret_cast<char*>(bitmaps[i].data()), kWidth, kHeight, kBits, kRowBytes);
    image->byte_order = LSBFirst;
    image->bitmap_bit_order = LSBFirst;
    all = XmInstallImage(image, const_cast<char*>(kImages[i].name)) != False && all;
  }
  return all;
}

}  // namespace

void showStockImage(Widget button, int id) {
  const auto* image = std::find_if(std::begin(kImages), std::end(kImages),
                                   [id](const StockImage& entry) { return entry.id == id; });
  static const bool isInstalled = installImages(XtDisplay(button));
  if (image == std::end(kImages) || !isInstalled) {
    return;
  }
  Pixel foreground = 0;
  Pixel background = 0;
  XtVaGetValues(button, XmNforeground, &foreground, XmNbackground, &background, nullptr);
  const Pixmap picture =
      XmGetPixmap(XtScreen(button), const_cast<char*>(image->name), foreground, background);
  if (picture != XmUNSPECIFIED_PIXMAP) {
    XtVaSetValues(button, XmNlabelType, XmPIXMAP, XmNlabelPixmap, picture, nullptr);
  }
}
