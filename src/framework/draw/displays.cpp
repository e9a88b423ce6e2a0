#include "framework/draw/displays.h"

#include <algorithm>

#include "framework/draw/pictures.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_handles.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

// Repaints go through one record: the first area since the last paint makes the server send the
// window an Expose event, the later ones only wait in the record for that paint.

namespace {

constexpr int kCorner = 2;

/// The area that stands in the event which triggers a paint. Without erasing it is kept as small as
/// can be, so that nothing flashes.
zRect triggerArea(const zRect& area, bool erase) {
  if (erase) {
    return area;
  }
  if (area.isZero() || (area.width() >= kCorner && area.height() >= kCorner)) {
    return {area.pos(), zDimension{kCorner, kCorner}};
  }
  return area;
}

}  // namespace

void ziInfoDisplay::lockAttach() {
  if (Display* display = theScreen().display) {
    makeContexts(display, DefaultRootWindow(display), WhitePixel(display, DefaultScreen(display)));
  }
}

zBitmapDisplay::zBitmapDisplay(zBitmap& bitmap) : extent(bitmap.size()) {
  xDisplay = theScreen().display;
  xWindow = bitmap.pixmap();
  if (xDisplay != nullptr && !bitmap.isEmpty()) {
    state = kDrawStateReady;
  }
}

void zBitmapDisplay::lockAttach() {
  if (isReady()) {
    makeContexts(xDisplay, xWindow, WhitePixel(xDisplay, DefaultScreen(xDisplay)));
  }
}

zWinDisplay::zWinDisplay(ziDisplayOwner& displayOwner) : owner(displayOwner) {}

zWinDisplay::~zWinDisplay() = default;

void zWinDisplay::makeReady(Display* display, Window window) {
  xDisplay = display;
  xWindow = window;
  state = kDrawStateReady;
}

void zWinDisplay::lockAttach() {
  Display* display = theScreen().display;
  if (hasContexts() || display == nullptr) {
    return;
  }
  if (xWindow == 0) {
    xWindow = owner.displayWindow();
  }
  const unsigned long backgroundPixel = owner.backgroundPixel();
  backColour = ziDrawCache::instance().colours().colourOf(backgroundPixel);
  // Text is measured before the window is there; its contexts fit all windows of the screen.
  makeContexts(display, xWindow == 0 ? DefaultRootWindow(display) : xWindow, backgroundPixel);
  const zRCFont font = owner.displayFont();
  if (!font.isEmpty()) {
    setFont(font);
  }
}

void zWinDisplay::clipBounds(zRect& rect) {
  if (painting) {
    rect = paintRect;
  } else {
    getInterior(rect);
  }
}

void zWinDisplay::getInterior(zRect& rect) {
  rect = zRect({}, owner.clientSize());
}

void zWinDisplay::invalidate(const zRect* rect, int erase) {
  if (xDisplay == nullptr || xWindow == 0 || owner.displayPaintLock() != 0) {
    return;
  }
  const zRect area = rect == nullptr ? zRect() : *rect;
  if (invalidRects.empty()) {
    // What is to be erased is erased at once, so the record of it need not say so.
    requestPaint(triggerArea(area, erase != 0));
    invalidRects.push_back({area, false});
  } else {
    invalidRects.push_back({area, erase != 0});
  }
}

void zWinDisplay::invalidateRegion(const zRegion* region, int erase) {
  if (region == nullptr) {
    invalidate(nullptr, erase);
    return;
  }
  const zRect box = region->clipBox();
  invalidate(&box, erase);
}

void zWinDisplay::requestPaint(const zRect& area) {
  clearArea(area);
  XEvent event{};
  event.xexpose.type = Expose;
  event.xexpose.window = xWindow;
  event.xexpose.x = toXCoord(area.left);
  event.xexpose.y = toXCoord(area.top);
  event.xexpose.width = toXExtent(area.width());
  event.xexpose.height = toXExtent(area.height());
  XSendEvent(xDisplay, xWindow, True, ExposureMask, &event);
}

void zWinDisplay::clearArea(const zRect& area) {
  // To X an extent of 0 reaches to the edge of the window, which only the whole window may do.
  const bool isEmpty = area.width() <= 0 || area.height() <= 0;
  if (area.isZero() || !isEmpty) {
    XClearArea(xDisplay, xWindow, toXCoord(area.left), toXCoord(area.top), toXExtent(area.width()),
               toXExtent(area.height()), False);
  }
}

void zWinDisplay::takeInvalidRects(zRegion& region) {
  while (!invalidRects.empty()) {
    const ziInvalidRect last = invalidRects.back();
    invalidRects.pop_back();
    if (last.erase) {
      clearArea(last.rect);
    }
    zRect whole;
    getInterior(whole);
    region.add(last.rect.isZero() ? whole : last.rect);
  }
}

void zWinDisplay::beginPaint(zRegion region) {
  paintRegion = std::make_unique<zRegion>(std::move(region));
  paintRect = paintRegion->clipBox();
  clipContexts(paintRegion.get());
  painting = true;
  lock();
}

void zWinDisplay::endPaint() {
  unlock();
  painting = false;
  forgetClip();
}

void zWinDisplay::setBackgroundBrush(std::unique_ptr<zBrush> brush) {
  background = std::move(brush);
  if (background != nullptr) {
    setBackColour(background->colour());
  }
}

void zWinDisplay::copyArea(const zRect& source, const zPoint& to) {
  if (canDraw()) {
    XCopyArea(xDisplay, xWindow, xWindow, currentGC, toXCoord(source.left), toXCoord(source.top),
              toXExtent(source.width()), toXExtent(source.height()), toXCoord(to.x),
              toXCoord(to.y));
  }
}
