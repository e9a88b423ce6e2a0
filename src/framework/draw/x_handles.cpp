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

zRegion::zRegion() : area(XCreateRegion()) {}

zRegion::zRegion(const zRect& rect) : zRegion() {
  add(rect);
}

zRegion::zRegion(const zRegion& other) : zRegion() {
  XUnionRegion(other.get(), get(), get());
}

void zRegion::add(const zRect& rect) {
  XRectangle part{};
  part.x = toXCoord(rect.left);
  part.y = toXCoord(rect.top);
  part.width = toXExtent(std::int64_t{rect.right} - part.x);
  part.height = toXExtent(std::int64_t{rect.bottom} - part.y);
  if (part.width != 0 && part.height != 0) {
    XUnionRectWithRegion(&part, get(), get());
  }
}

void zRegion::intersect(const zRegion& other) {
  XIntersectRegion(get(), other.get(), get());
}

zRect zRegion::clipBox() const {
  XRectangle box{};
  XClipBox(get(), &box);
  return {zPoint{box.x, box.y}, zDimension{box.width, box.height}};
}
