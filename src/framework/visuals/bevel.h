#pragma once

#include "framework/draw/color.h"
#include "support/geometry.h"

class zDisplay;

/// The colours of three-dimensional furniture.
inline constexpr zColor kFaceColour = kColorLightGrey;
inline constexpr zColor kBevelLight = kColorWhite;
inline constexpr zColor kBevelDark = kColorGrey;

enum class zBevel { kRaised, kSunken };

/// Draws `lines` lines, one in the other, just inside `rect`: light on top and left when raised.
void drawBevel(zDisplay& display, const zRect& rect, zBevel bevel, int lines = 1);
/// Draws a frame, one pixel wide, just inside `rect`.
void drawFrame(zDisplay& display, const zRect& rect, const zColor& colour);
/// Fills `rect` with one colour.
void fillArea(zDisplay& display, const zRect& rect, const zColor& colour);
/// The rectangle with `by` pixels taken off on all sides; empty where there is not so much.
zRect insetRect(const zRect& rect, int by);
/// The top left corner at which `inner` lies in the middle of `outer`.
zPoint centredIn(const zRect& outer, const zDimension& inner);
