#include "tests/ui/draw/picture.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace {

char letterOf(unsigned long pixel) {
  switch (pixel) {
    case 0xC0C0C0:
      return '.';
    case 0x808080:
      return 'd';
    case 0xFFFFFF:
      return 'w';
    case 0x000000:
      return '#';
    case 0xFF0000:
      return 'r';
    case 0x0000FF:
      return 'b';
    case 0xFFFF00:
      return 'y';
    default:
      return '?';
  }
}

}  // namespace

std::string pictureOf(Display* display, XID drawable, const zRect& area) {
  XImage* image =
      XGetImage(display, drawable, area.left, area.top, static_cast<unsigned>(area.width()),
                static_cast<unsigned>(area.height()), AllPlanes, ZPixmap);
  std::string rows = "\n";
  for (int y = 0; y < area.height(); ++y) {
    for (int x = 0; x < area.width(); ++x) {
      rows += letterOf(XGetPixel(image, x, y));
    }
    rows += '\n';
  }
  XDestroyImage(image);
  return rows;
}
