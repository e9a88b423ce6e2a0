#pragma once

#include <string>

#include "framework/draw/xtfwd.h"
#include "support/geometry.h"

/// What a window or pixmap shows in `area`, a line a row and a character a pixel: '.' the face
/// colour 0xC0C0C0, 'd' its dark grey 0x808080, 'w' white, '#' black, 'r' red, 'b' blue, 'y'
/// yellow, '?' any other. Begins with a line feed, as a raw string does that shows its rows.
std::string pictureOf(Display* display, XID drawable, const zRect& area);

/// A picture in which a row that comes again and again stands once, with " *3" behind it.
std::string packed(const std::string& picture);
