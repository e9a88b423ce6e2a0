#include "framework/draw/x_handles.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

void ziFreeGc(Display* display, GC gc) {
  XFreeGC(display, gc);
}

void ziFreePixmap(Display* display, Pixmap pixmap) {
  XFreePixmap(display, pixmap);
}

void ziRegionFree::operator()(Region region) const {
  XDestroyRegion(region);
}
