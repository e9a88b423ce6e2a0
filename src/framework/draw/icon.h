#pragma once

#include <utility>

#include "framework/draw/x_handles.h"
#include "support/geometry.h"

/// A picture with a mask, as frames and dialogs show it. Owns its pixmaps.
class zIcon {
 public:
  zIcon(ziPixmapHandle colours, ziPixmapHandle mask, const zDimension& size)
      : colourPixmap(std::move(colours)), maskPixmap(std::move(mask)), extents(size) {}

  Pixmap pixmap() const { return colourPixmap.get(); }
  Pixmap mask() const { return maskPixmap.get(); }
  const zDimension& size() const { return extents; }

 private:
  ziPixmapHandle colourPixmap;
  ziPixmapHandle maskPixmap;
  zDimension extents;
};
