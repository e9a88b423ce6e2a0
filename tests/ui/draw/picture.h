#pragma once

#include <map>

#include "tests/ui/support/ui_test.h"

#include <X11/Xutil.h>

/// What a window or pixmap shows in `area`, a line a row and a character a pixel: '.' the face
/// colour 0xC0C0C0, 'd' its dark grey 0x808080, 'w' white, '#' black, 'r' red, 'b' blue, 'y'
/// yellow, '?' any other. Begins with a line feed, as a raw string does that shows its rows.
inline std::string pictureOf(XID drawable, const zRect& area) {
  XImage* image =
      XGetImage(ui::display(), drawable, area.left, area.top, static_cast<unsigned>(area.width()),
                static_cast<unsigned>(area.height()), AllPlanes, ZPixmap);
  const std::map<unsigned long, char> letters{{0xC0C0C0, '.'}, {0x808080, 'd'}, {0xFFFFFF, 'w'},
                                              {0x000000, '#'}, {0xFF0000, 'r'}, {0x0000FF, 'b'},
                                              {0xFFFF00, 'y'}};
  std::string rows = "\n";
  for (int y = 0; y < area.height(); ++y) {
    for (int x = 0; x < area.width(); ++x) {
      const auto found = letters.find(XGetPixel(image, x, y));
      rows += found == letters.end() ? '?' : found->second;
    }
    rows += '\n';
  }
  XDestroyImage(image);
  return rows;
}
