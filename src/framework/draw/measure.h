#pragma once

#include "support/geometry.h"

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
