#pragma once

#include <cstdint>

#include "support/geometry.h"

/// How a sizer wants to stand in its parent's rectangle.
enum zGravity : int {
  kGravityLeft = 0,         ///< strip at the left edge of what is left
  kGravityRight = 1,        ///< strip at the right edge
  kGravityTop = 2,          ///< strip at the top edge
  kGravityBottom = 3,       ///< strip at the bottom edge
  kGravityCentre = 4,       ///< centred in what is left
  kGravityFill = 5,         ///< fills what is left
  kGravityOwnPosition = 6,  ///< own position, not affected by the others
};

/// What a sizer tells its parent's layout. A width or height of 0 means as far as there is room.
struct zLayoutInfo {
  zPoint pos;
  zDimension minSize;
  zDimension size;
  zDimension maxSize;
  int gravity = kGravityOwnPosition;
  /// Two words for a layout's own purposes during one pass.
  void* layoutPointer = nullptr;
  std::intptr_t layoutWord = 0;

  void reset() { *this = zLayoutInfo(); }
  void setAllSizes(const zDimension& value) { minSize = size = maxSize = value; }
};
