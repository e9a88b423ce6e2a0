#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "framework/draw/res_id.h"
#include "framework/draw/x_handles.h"
#include "support/geometry.h"

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

/// zIcon::windowManagerPixels() of an icon resource, without a display; empty if there is none.
std::vector<unsigned long> iconPixels(const zResId& resource);
