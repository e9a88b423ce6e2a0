#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "framework/draw/color.h"
#include "framework/draw/font.h"
#include "support/geometry.h"

/// What the texts of X resources mean. Users write them: any text is to have some meaning.

/// A number as far as the text begins with one, at most as large as its type; "True" and "true" are
/// 1, other text is 0.
int asNumber(const std::string& text);

/// "1000x720", the form of a geometry string without a place; anything else is no size, zero.
zDimension asSize(const std::string& text);

/// "#rrggbb", the form of all colours in the resource file that comes with the program.
std::optional<zColor> hexColour(std::string_view text);

/// The font that a single font name asks for that gives a point size and leaves the pixel size
/// open; none for any other, and for a list of names, which is the toolkit's to take apart.
std::optional<zFontSpec> askedInPoints(std::string_view name);

/// The points of a dialog's font whose dialog asks for `points`, with so many added: none is too
/// small to be seen, or larger than a screen has room for.
int dialogFontPoints(unsigned points, int added);
