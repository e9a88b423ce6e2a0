#pragma once

#include "support/geometry.h"

/// Where a drop-down list of the size `list` goes on a screen, given the rectangle of its entry in
/// screen coordinates: below the entry; above it where only that stays on the screen; on the side
/// with more room, and shorter, where neither does. It is never cut at the left or right either, as
/// far as the screen is wide enough.
zRect dropDownRect(const zRect& entry, const zDimension& list, const zDimension& screen);
