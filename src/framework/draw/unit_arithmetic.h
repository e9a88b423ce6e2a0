#pragma once

#include "support/geometry.h"

/// The text whose size defines the dialog unit. "L" before "K" is intended: every dialog was laid
/// out with it.
inline constexpr const char kDialogUnitText[] =
    "ABCDEFGHIJLKMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
inline constexpr int kDialogUnitTextLength = 52;

/// Width per character, and height, of a text that cannot be measured; pixels.
inline constexpr int kFallbackCharSize = 15;

/// Pixels of a measure in tenths of a point.
int tenthsOfPointToPixels(int tenths, int dotsPerInch);

/// Pixels of `units` horizontal dialog units; `referenceWidth` is that of kDialogUnitText.
int dialogUnitsX(int units, int referenceWidth);

/// Pixels of `units` vertical dialog units. The result is about half as high again as the unit
/// says, which is intended: it makes up for controls that are taller here than the dialogs assume.
int dialogUnitsY(int units, int referenceHeight);

/// The size of `length` characters that cannot be measured.
zDimension fallbackTextSize(int length);
