#pragma once

#include "framework/draw/xtfwd.h"

/// Makes the font names of the display's resource database that give a point size and no pixel size
/// the names of the nearest fonts of that size on this screen: the server takes 75 or 100 dots per
/// inch for every screen. Needs theScreen(); for the time before there are widgets.
void resolveFontPoints(Display* display);
