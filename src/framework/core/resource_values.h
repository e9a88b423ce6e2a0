#pragma once

#include <functional>
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

/// The font that a font name asks for that gives a point size, of which 72 points count at most,
/// and leaves the pixel size open; none for any other.
std::optional<zFontSpec> askedInPoints(std::string_view name);

/// A list of fonts in which the names that ask for points are those that `nameOf` gives them. Tags
/// and sets of fonts stay as they are. Nothing when no name asks for points.
std::optional<std::string> resolvedPoints(
    std::string_view list, const std::function<std::string(const zFontSpec&)>& nameOf);

/// The points of a dialog's font whose dialog asks for `points`, with so many added: none is too
/// small to be seen, or larger than a screen has room for.
int dialogFontPoints(unsigned points, int added);
