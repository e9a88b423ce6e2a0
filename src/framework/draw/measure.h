#pragma once

#include "support/geometry.h"

/// The text whose size defines the dialog unit. "L" before "K" is intended: every dialog was laid
/// out with it.
inline constexpr const char kDialogUnitText[] =
    "ABCDEFGHIJLKMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
inline constexpr int kDialogUnitTextLength = 52;

/// Width per character, and height, of a text that cannot be measured; pixels.
inline constexpr int kFallbackCharSize = 15;

/// Pixels of a measure in tenths of a point.
int tenthsOfPointToPixels(int tenths, int dotsPerInch);

/// Pixels of `units` horizontal dialog units; `referenceWidth` is that of kDialogUnitText.
int dialogUnitsX(int units, int referenceWidth);

/// Pixels of `units` vertical dialog units. The result is about half as high again as the unit
/// says, which is intended: it makes up for controls that are taller here than the dialogs assume.
int dialogUnitsY(int units, int referenceHeight);

/// The size of `length` characters that cannot be measured.
zDimension fallbackTextSize(int length);

class zDisplay;
class zFont;

/// A measure given in some unit, with its size in pixels.
class zLogMeasure {
 public:
  int x() const { return given.x; }
  int y() const { return given.y; }
  int width() const { return pixels.width; }
  int height() const { return pixels.height; }
  const zDimension& size() const { return pixels; }
  operator zDimension() const { return pixels; }

 protected:
  zLogMeasure(int x, int y) : given{x, y} {}

  zPoint given;
  zDimension pixels;
};

/// A measure in tenths of a point, by the screen's resolution.
class zPrPoint : public zLogMeasure {
 public:
  zPrPoint(int x, int y);
};

/// A measure in dialog units, which follow the size of a font.
class zDialogUnit : public zLogMeasure {
 public:
  /// By the program's default font, whose measures are kept for the next call.
  zDialogUnit(int x, int y);
  /// By a font. This drops the measures kept of the default font.
  zDialogUnit(int x, int y, const zFont& font);
  /// By the font in force on a display.
  zDialogUnit(int x, int y, zDisplay& display);

 private:
  void convert(const zDimension& reference);
};
