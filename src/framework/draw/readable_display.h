#pragma once

#include "framework/draw/display.h"

/// A display whose pixels can be read back.
class zReadableDisplay : public zDisplay {
 public:
  int getPixel(int x, int y, zColor& colour) override;
};

class zBitmap;

/// A display that only measures: it has no surface and is never ready.
class ziInfoDisplay : public zReadableDisplay {
 public:
  ziInfoDisplay() = default;

  void getInterior(zRect& rect) override { rect = zRect(); }

 protected:
  void lockAttach() override;
};

/// A display on an off-screen pixmap of the screen's depth; ready at once.
class zBitmapDisplay : public zReadableDisplay {
 public:
  /// Draws on a pixmap of the caller's.
  zBitmapDisplay(Pixmap pixmap, const zDimension& size);
  /// Draws on a bitmap, which must outlive the display; never ready if that has no pixmap.
  explicit zBitmapDisplay(zBitmap& bitmap);
  /// Makes its own pixmap, with undefined contents; owned.
  explicit zBitmapDisplay(const zDimension& size);

  void getInterior(zRect& rect) override { rect = zRect({}, extent); }
  Pixmap pixmap() const { return xWindow; }
  /// Takes the pixmap over from the display, which goes on drawing on it.
  ziPixmapHandle releasePixmap() { return std::move(owned); }

 protected:
  void lockAttach() override;

 private:
  void use(Pixmap pixmap);

  zDimension extent;
  ziPixmapHandle owned;
};
