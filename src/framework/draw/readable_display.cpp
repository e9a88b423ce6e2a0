#include "framework/draw/readable_display.h"

#include <algorithm>

#include "framework/draw/bitmap.h"
#include "framework/draw/draw_cache.h"
#include "framework/draw/screen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

int zReadableDisplay::getPixel(int x, int y, zColor& colour) {
  if (!canDraw()) {
    return kNotReady;
  }
  XImage* image = XGetImage(xDisplay, xWindow, x + currentOrigin().x, y + currentOrigin().y, 1, 1,
                            AllPlanes, ZPixmap);
  if (image == nullptr) {
    return kNotReady;
  }
  colour = ziDrawCache::instance().colours().colourOf(XGetPixel(image, 0, 0));
  XDestroyImage(image);
  return kDrawn;
}

void ziInfoDisplay::lockAttach() {
  if (Display* display = theScreen().display) {
    makeContexts(display, DefaultRootWindow(display), WhitePixel(display, DefaultScreen(display)));
  }
}

zBitmapDisplay::zBitmapDisplay(Pixmap pixmap, const zDimension& size) : extent(size) {
  use(pixmap);
}

zBitmapDisplay::zBitmapDisplay(zBitmap& bitmap) : zBitmapDisplay(bitmap.pixmap(), bitmap.size()) {}

zBitmapDisplay::zBitmapDisplay(const zDimension& size) : extent(size) {
  Display* display = theScreen().display;
  if (display == nullptr) {
    return;
  }
  const int screen = DefaultScreen(display);
  owned =
      ziPixmapHandle(display, XCreatePixmap(display, RootWindow(display, screen),
                                            static_cast<unsigned>(std::max(size.width, 1)),
                                            static_cast<unsigned>(std::max(size.height, 1)),
                                            static_cast<unsigned>(DefaultDepth(display, screen))));
  use(owned.get());
}

void zBitmapDisplay::use(Pixmap pixmap) {
  xDisplay = theScreen().display;
  xWindow = pixmap;
  if (xDisplay != nullptr && pixmap != 0) {
    state = kDrawStateReady;
  }
}

void zBitmapDisplay::lockAttach() {
  if (isReady()) {
    makeContexts(xDisplay, xWindow, WhitePixel(xDisplay, DefaultScreen(xDisplay)));
  }
}
