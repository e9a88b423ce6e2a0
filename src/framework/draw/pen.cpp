#include "framework/draw/pen.h"

#include <algorithm>
#include <array>
#include <limits>

#include "framework/draw/draw_cache.h"

namespace {

constexpr int kStockWidth = 1;

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

zPen::zPen(const zColor& colour, zPenStyle style, int width)
    : zDrawObj(false),
      styleValue(style),
      widthValue(width),
      colourValue(colour),
      stock(kNotStockPen) {}

zPen::zPen(zStockPen stockPen)
    : zDrawObj(true),
      styleValue(kPenSolid),
      widthValue(kStockWidth),
      colourValue(stockPen == kStockWhitePen ? kColorWhite : kColorBlack),
      stock(stockPen) {}

bool zPen::isNull() const {
  return stock == kStockNullPen || (stock == kNotStockPen && styleValue == kPenNull);
}

unsigned long zPen::lookUpPixel() const {
  zColor wanted = colourValue;
  return ziDrawCache::instance().colours().pixel(wanted);
}
