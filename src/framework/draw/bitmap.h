#pragma once

#include <cstdint>
#include <span>

#include "framework/draw/draw_obj.h"
#include "framework/draw/res_id.h"
#include "framework/draw/x_handles.h"
#include "support/geometry.h"

class zDisplay;

/// A picture in a pixmap of the screen's depth, which it owns. One that could not be made has no
/// pixmap and no extent, and drawing it does nothing; a diagnostic message tells why.
class zBitmap : public zDrawObj {
 public:
  /// From a bitmap resource (BMP data).
  explicit zBitmap(const zResId& resource);
  /// From a BMP file.
  explicit zBitmap(const char* fileName);
  /// With undefined contents, to be drawn on by a zBitmapDisplay.
  zBitmap(int width, int height);
  /// A copy of `source`, for `display` or, with null, the screen.
  zBitmap(zDisplay* display, zBitmap& source);
  zBitmap(const zBitmap&) = delete;
  zBitmap& operator=(const zBitmap&) = delete;
  ~zBitmap() override = default;

  /// 0 when there is no picture.
  Pixmap pixmap() const { return owned.get(); }
  int width() const { return extents.width; }
  int height() const { return extents.height; }
  /// Bits per pixel of the pixmap.
  int depth() const { return bits; }
  zDimension size() const { return extents; }
  bool isEmpty() const { return pixmap() == 0; }

  /// Where the picture starts in whatever it is drawn on; for its owner's use.
  zPoint origin;

 protected:
  unsigned long lookUpPixel() const override { return pixmap(); }

 private:
  void decode(std::span<const std::uint8_t> bytes);
  void adopt(ziPixmapHandle pixmap, const zDimension& size);

  ziPixmapHandle owned;
  zDimension extents;
  int bits = 0;
};
