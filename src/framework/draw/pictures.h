#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "framework/draw/draw_obj.h"
#include "framework/draw/res_id.h"
#include "framework/draw/x_handles.h"
#include "support/geometry.h"

/// Diagnostics of the drawing floor. They go where the application object says; nowhere before it
/// has said so.
using ziDrawMessageSink = void (*)(const std::string& text);

void setDrawMessageSink(ziDrawMessageSink sink);
void drawMessage(const std::string& text);

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

/// A picture with a mask, as frames and dialogs show it. Owns its pixmaps. One that could not be
/// made has none and no extent, and drawing it does nothing; a diagnostic message tells why.
class zIcon {
 public:
  /// From an icon resource (ICO data).
  explicit zIcon(const zResId& resource);
  /// From an ICO file.
  explicit zIcon(const char* fileName);
  zIcon(ziPixmapHandle colours, ziPixmapHandle mask, const zDimension& size)
      : colourPixmap(std::move(colours)), maskPixmap(std::move(mask)), extents(size) {}

  /// Of the screen's depth; 0 when there is no picture.
  Pixmap pixmap() const { return colourPixmap.get(); }
  /// One bit deep, set where the picture is; 0 when it is everywhere.
  Pixmap mask() const { return maskPixmap.get(); }
  const zDimension& size() const { return extents; }
  /// The picture as the property _NET_WM_ICON takes it: width, height, then ARGB words row by row.
  /// Empty when the pixmaps came from elsewhere.
  const std::vector<unsigned long>& windowManagerPixels() const { return pixels; }

 private:
  void decode(std::span<const std::uint8_t> bytes, const std::string& noImage);

  ziPixmapHandle colourPixmap;
  ziPixmapHandle maskPixmap;
  zDimension extents;
  std::vector<unsigned long> pixels;
};

/// A pointer shape. Copies share the X cursor, which is freed with the last of them.
class zCursor {
 public:
  /// The default arrow: whatever the parent window shows; it has no X cursor of its own.
  zCursor() = default;
  /// A shape of the X cursor font (X11/cursorfont.h).
  zCursor(Display* display, unsigned fontShape);
  /// From a cursor resource (CUR data), in white and black. The default arrow, with a diagnostic
  /// message, if that cannot be.
  explicit zCursor(const zResId& resource);

  /// The X cursor id; 0 when there is none.
  unsigned long xCursor() const { return cursor == nullptr ? 0 : cursor->id; }

 private:
  struct Shared {
    Shared(Display* d, unsigned long i) : display(d), id(i) {}
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    ~Shared();

    Display* display;
    unsigned long id;
  };

  std::shared_ptr<Shared> cursor;
};
