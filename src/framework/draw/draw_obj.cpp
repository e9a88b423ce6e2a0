#include "framework/draw/draw_obj.h"

#include "framework/draw/screen.h"

namespace {

constexpr int kStockWidth = 1;

}  // namespace

unsigned long zDrawObj::pixel() const {
  if (!known && theScreen().display != nullptr) {
    value = lookUpPixel();
    known = true;
  }
  return value;
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
  return pixelOf(colourValue);
}

zBrush::zBrush(const zColor& colour) : zDrawObj(false), stock(kPlainBrush), colourValue(colour) {}

unsigned long zBrush::lookUpPixel() const {
  return pixelOf(colourValue);
}
