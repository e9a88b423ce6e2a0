#pragma once

#include <cstddef>

#include "framework/draw/color.h"
#include "framework/draw/draw_obj.h"

/// Line style of a pen.
enum zPenStyle : int {
  kPenSolid = 0,
  kPenDash = 1,
  kPenDot = 2,
  kPenDashDot = 3,
  kPenDashDotDot = 4,
  kPenNull = 5,
};

enum zStockPen : int {
  kStockWhitePen = 6,
  kStockBlackPen = 7,
  kStockNullPen = 8,
  kNotStockPen = 9
};

/// The lengths of a dashed line's parts, on and off in turn; pixels.
struct ziDashList {
  static constexpr std::size_t kMax = 8;

  char lengths[kMax] = {};
  int count = 0;  ///< 0 for a line that is not dashed
};

/// The dashes of a pen of that style and width; a width below 1 counts as 1.
ziDashList dashList(int style, int width);

/// What lines are drawn with.
class zPen : public zDrawObj {
 public:
  /// `width` in pixels; 0 draws the thinnest line, one pixel wide.
  explicit zPen(const zColor& colour, zPenStyle style = kPenSolid, int width = 0);
  /// A stock pen, solid and 1 wide.
  explicit zPen(zStockPen stock);

  int style() const { return styleValue; }
  int width() const { return widthValue; }
  const zColor& colour() const { return colourValue; }
  int stockId() const { return stock; }
  bool isDashed() const { return styleValue >= kPenDash && styleValue <= kPenDashDotDot; }
  /// A null pen draws nothing.
  bool isNull() const;

 protected:
  unsigned long lookUpPixel() const override;

 private:
  zPenStyle styleValue;
  int widthValue;
  zColor colourValue;
  zStockPen stock;
};
