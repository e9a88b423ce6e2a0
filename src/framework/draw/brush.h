#pragma once

#include "framework/draw/color.h"
#include "framework/draw/draw_obj.h"
#include "framework/draw/x_handles.h"
#include "support/geometry.h"

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
