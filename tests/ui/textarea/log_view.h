#pragma once

#include <vector>

#include "framework/draw/xtfwd.h"

/// What a user sees of a text area.

/// Bytes in the widget.
int shownLength(Widget text);
/// Pixels from one line to the next; the two lines at the upper edge must be there.
int lineHeight(Widget text);
/// The picture of the pointer.
std::vector<unsigned long> pointerShape();
