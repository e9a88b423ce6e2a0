#pragma once

#include <X11/Intrinsic.h>

/// From now on each window of the display hears of its newest size and place only.
void dropOldConfigureEvents(Display* display);
