#pragma once

#include <memory>
#include <vector>

#include "framework/draw/color.h"
#include "support/geometry.h"
#include "support/rwc_string.h"

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
/// Draws lines from point to point.
void drawLines(zDisplay& display, const zColor& colour, const std::vector<zPoint>& points);
/// Draws a text with its top left corner at `at`, its ground as it is.
void drawText(zDisplay& display, const zPoint& at, const RWCString& text);
/// Fills `rect` with one colour.
void fillArea(zDisplay& display, const zRect& rect, const zColor& colour);
/// The rectangle with `by` pixels taken off on all sides; empty where there is not so much.
zRect insetRect(const zRect& rect, int by);
/// The top left corner at which `inner` lies in the middle of `outer`.
zPoint centredIn(const zRect& outer, const zDimension& inner);

class zBitmap;

/// The greyed form of an image for a disabled button: its dark parts, or all that differs from its
/// first pixel when it has none, embossed on the face colour. Null when there is no picture.
std::unique_ptr<zBitmap> makeGrayImage(const zBitmap& image);
