#pragma once

#include "support/geometry.h"

struct zEvent;
class zWindow;

/// What a mouse event says.
struct zPointer {
  unsigned button = 0;  ///< the button that was pressed or released; 0 for any other event
  zPoint pos;           ///< in the window of the event, pixels
};
zPointer pointerOf(const zEvent& event);

/// Sends all mouse events to `window` until the release, wherever the pointer goes; without this
/// the program's other windows take those over them. Ends by itself when the window goes.
void grabPointer(const zWindow& window);
void releasePointer(const zWindow& window);
/// Whether the first button is up and no event waits: a release that was to come went elsewhere,
/// such as to a dialog that opened meanwhile.
bool isReleaseLost(const zWindow& window);
