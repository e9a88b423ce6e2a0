#include "framework/draw/brush.h"

#include <array>

#include "framework/draw/draw_cache.h"
#include "framework/draw/screen.h"

#include <X11/Xlib.h>

namespace {

constexpr int kPatternSize = 8;
using Pattern = std::array<char, kPatternSize>;

// One byte a row, leftmost pixel in the lowest bit; in the order of zHatch.
constexpr std::array<Pattern, 6> kPatterns{{
    {0, 0, 0, 0, 0, 0, 0, '\xff'},
    {'\x01', '\x01', '\x01', '\x01', '\x01', '\x01', '\x01', '\x01'},
    {'\x01', '\x02', '\x04', '\x08', '\x10', '\x20', '\x40', '\x80'},
    {'\x80', '\x40', '\x20', '\x10', '\x08', '\x04', '\x02', '\x01'},
    {'\x01', '\x01', '\x01', '\x01', '\x01', '\x01', '\x01', '\xff'},
    {'\x81', '\x42', '\x24', '\x18', '\x18', '\x24', '\x42', '\x81'},
}};

zColor stockColour(zStockBrush stock) {
  switch (stock) {
    case kStockLightGreyBrush:
      return kColorLightGrey;
    case kStockGreyBrush:
      return kColorGrey;
    case kStockDarkGreyBrush:
      return kColorDarkGrey;
    case kStockBlackBrush:
      return kColorBlack;
    default:
      return kColorWhite;
  }
}

}  // namespace

zBrush::zBrush(const zColor& colour) : zBrush(colour, kHatchNone) {}

zBrush::zBrush(const zColor& colour, zHatch hatch)
    : zDrawObj(false), stock(kPlainBrush), colourValue(colour), hatchValue(hatch) {}

zBrush::zBrush(zStockBrush stockBrush)
    : zDrawObj(true), stock(stockBrush), colourValue(stockColour(stockBrush)) {}

Pixmap zBrush::stipple() const {
  Display* display = theScreen().display;
  const auto index = static_cast<std::size_t>(hatchValue);
  if (index < kPatterns.size() && !pattern && display != nullptr) {
    const Pattern& rows = kPatterns[index];
    pattern =
        ziPixmapHandle(display, XCreateBitmapFromData(display, DefaultRootWindow(display),
                                                      rows.data(), kPatternSize, kPatternSize));
  }
  return pattern.get();
}

unsigned long zBrush::lookUpPixel() const {
  zColor wanted = colourValue;
  return ziDrawCache::instance().colours().pixel(wanted);
}
