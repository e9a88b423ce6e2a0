#include "framework/draw/cursor.h"

#include <X11/Xlib.h>

zCursor::zCursor(Display* display, unsigned fontShape)
    : cursor(std::make_shared<Shared>(display, XCreateFontCursor(display, fontShape))) {}

zCursor::Shared::~Shared() {
  if (id != 0) {
    XFreeCursor(display, id);
  }
}
