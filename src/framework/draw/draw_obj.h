#pragma once

#include <cstddef>

#include "framework/draw/color.h"
#include "framework/draw/x_handles.h"
#include "support/geometry.h"
#include "support/lists.h"
#include "support/rwc_string.h"

/// An object that a display draws with.
class zDrawObj : public zStorable {
 public:
  /// The X pixel (of a font: its X id), looked up when first wanted; 0 without a display.
  unsigned long pixel() const;
  bool isStock() const { return stock; }

 protected:
  explicit zDrawObj(bool isStock) : stock(isStock) {}
  /// Asks the server or a cache; called only while a display is open.
  virtual unsigned long lookUpPixel() const = 0;

 private:
  mutable unsigned long value = 0;
  mutable bool known = false;
  bool stock;
};

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

enum zStockBrush : int {
  kStockWhiteBrush = 0,
  kStockLightGreyBrush = 1,
  kStockGreyBrush = 2,
  kStockDarkGreyBrush = 3,
  kStockBlackBrush = 4,
  kStockHollowBrush = 5,
  kStockNullBrush = 6,
  kPlainBrush = 7,  ///< a colour of its own
};

/// Pattern of a brush.
enum zHatch : int {
  kHatchHorizontal = 0,
  kHatchVertical = 1,
  kHatchForward = 2,
  kHatchBackward = 3,
  kHatchCross = 4,
  kHatchDiagonalCross = 5,
  kHatchNone = 99,
};

/// What areas are filled with.
class zBrush : public zDrawObj {
 public:
  explicit zBrush(const zColor& colour);
  zBrush(const zColor& colour, zHatch hatch);
  explicit zBrush(zStockBrush stock);

  int stockId() const { return stock; }
  const zColor& colour() const { return colourValue; }
  int hatch() const { return hatchValue; }
  /// A hollow brush fills nothing.
  bool isHollow() const { return stock == kStockHollowBrush || stock == kStockNullBrush; }
  /// The pattern, one bit deep; 0 for a plain brush. Made when first wanted, owned by the brush.
  Pixmap stipple() const;
  /// Where the pattern starts, relative to the drawable.
  const zDimension& origin() const { return originValue; }
  void setOrigin(const zDimension& origin) { originValue = origin; }

 protected:
  unsigned long lookUpPixel() const override;

 private:
  zStockBrush stock;
  zColor colourValue;
  zHatch hatchValue = kHatchNone;
  mutable ziPixmapHandle pattern;
  zDimension originValue;
};

class zBrush;
class zDisplay;
class zFont;
class zPen;

/// What is in force on a display or a pane: the object pushed last. None of them owns its objects.
using zBrushStack = zTypedSlist<zBrush>;
using zDisplayStack = zTypedSlist<zDisplay>;
using zFontStack = zTypedSlist<zFont>;
using zPenStack = zTypedSlist<zPen>;
