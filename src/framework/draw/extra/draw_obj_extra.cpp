// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.
// Dashed pens, patterned and stock brushes.

#include <algorithm>
#include <array>
#include <limits>

#include "framework/draw/draw_obj.h"
#include "framework/draw/screen.h"

#include <X11/Xlib.h>

namespace {

struct DashRow {
  int count;
  std::array<int, ziDashList::kMax> widths;  // in widths of the pen
};

constexpr std::array<DashRow, 4> kDashRows{{
    {2, {4, 2}},
    {2, {1, 2}},
    {6, {8, 3, 2, 3, 8, 3}},
    {8, {8, 3, 2, 3, 2, 3, 8, 3}},
}};

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

ziDashList dashList(int style, int width) {
  ziDashList list;
  if (style < kPenDash || style > kPenDashDotDot) {
    return list;
  }
  // X takes lengths of one byte, and none of 0.
  constexpr int kLongest = std::numeric_limits<unsigned char>::max();
  const DashRow& row = kDashRows[static_cast<std::size_t>(style - kPenDash)];
  const int unit = std::clamp(width, 1, kLongest);
  list.count = row.count;
  for (std::size_t i = 0; i < static_cast<std::size_t>(row.count); ++i) {
    list.lengths[i] = static_cast<char>(std::min(row.widths[i] * unit, kLongest));
  }
  return list;
}

zBrush::zBrush(const zColor& colour, zHatch hatch)
    : zDrawObj(false), stock(kPlainBrush), colourValue(colour), hatchValue(hatch) {}

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

zBrush::zBrush(zStockBrush stockBrush)
    : zDrawObj(true), stock(stockBrush), colourValue(stockColour(stockBrush)) {}
