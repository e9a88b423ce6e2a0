// Painting of panes: one draw for a whole burst of exposures and recorded rectangles.

#include <utility>

#include "framework/core/pane.h"
#include "framework/core/window_events_xm.h"
#include "framework/draw/x_handles.h"

namespace {

// A rectangle of all zeros stands for the whole window.
zRect exposedRect(const XEvent& event, const zDimension& whole) {
  zRect rect;
  if (event.type == Expose) {
    const XExposeEvent& e = event.xexpose;
    rect = zRect(zPoint{e.x, e.y}, zDimension{e.width, e.height});
  } else {
    const XGraphicsExposeEvent& e = event.xgraphicsexpose;
    rect = zRect(zPoint{e.x, e.y}, zDimension{e.width, e.height});
  }
  return rect.isZero() ? zRect(zPoint{}, whole) : rect;
}

// Takes all exposures of the window that wait in the queue.
void addQueuedExposures(Display* display, Window window, const zDimension& whole, zRegion& region) {
  bool found = true;
  while (found) {
    found = false;
    for (const int type : {Expose, GraphicsExpose}) {
      XEvent queued;
      while (XCheckTypedWindowEvent(display, window, type, &queued) != False) {
        region.add(exposedRect(queued, whole));
        found = true;
      }
    }
  }
}

}  // namespace

bool ziPainted::zPaneExposeProc(XEvent& event) {
  const ziAlive alive(&painted);
  if (event.type == Expose || event.type == GraphicsExpose) {
    expose(event);
  }
  return !alive;
}

void ziPainted::expose(XEvent& event) {
  if (!ownDisplay->isReady()) {
    ownDisplay->makeReady(event.xany.display, event.xany.window);
    displayReady();
  }
  const zDimension whole = clientSize();
  zRegion region;
  region.add(exposedRect(event, whole));
  addQueuedExposures(event.xany.display, event.xany.window, whole, region);
  const ziAlive alive(&painted);
  ownDisplay->takeInvalidRects(region);
  ownDisplay->beginPaint(std::move(region));
  zEvent paint;
  paint.xevent = &event;
  paint.window = &painted;
  draw(&paint);
  if (alive) {
    ownDisplay->endPaint();
  }
}

Window ziPainted::displayWindow() const {
  Widget widget = painted.widget();
  return widget != nullptr && XtIsRealized(widget) ? XtWindow(widget) : None;
}

unsigned long ziPainted::backgroundPixel() const {
  Pixel pixel = 0;
  if (painted.widget() != nullptr) {
    XtVaGetValues(painted.widget(), XmNbackground, &pixel, nullptr);
  }
  return pixel;
}

int ziPainted::displayPaintLock() const {
  return static_cast<int>(painted.paintLocks());
}

zRCFont ziPainted::displayFont() const {
  if (!painted.fontHandle().isEmpty() || painted.parent() == nullptr) {
    return painted.fontHandle();
  }
  return painted.parent()->fontHandle();
}

void zPane::expose(XEvent& event) {
  if (!ownDisplay->isReady() && !hasScrollBars()) {
    Position x = 0;
    Position y = 0;
    XtVaGetValues(mainWidget, XmNx, &x, XmNy, &y, nullptr);
    sizer()->setPos({x, y});
    sizer()->setSize(widgetSize(mainWidget));
  }
  const bool isPushed = currentDisplay != ownDisplay.get();
  if (isPushed) {
    pushDisplay(ownDisplay.get());
  }
  const ziAlive alive(this);
  ziPainted::expose(event);
  if (alive && isPushed) {
    popDisplay();
  }
}

int zPane::draw(zEvent* /*event*/) {
  currentDisplay->lock();
  currentDisplay->unlock();
  return 0;
}

void zPane::update() {
  if (!isRealized() || !ownDisplay->hasInvalidRects()) {
    zWindow::update();
    return;
  }
  const zRect first = ownDisplay->firstInvalidRect();
  XEvent event = {};
  event.xexpose.type = Expose;
  event.xexpose.display = XtDisplay(mainWidget);
  event.xexpose.window = XtWindow(mainWidget);
  event.xexpose.x = first.left;
  event.xexpose.y = first.top;
  event.xexpose.width = first.width();
  event.xexpose.height = first.height();
  expose(event);
  XFlush(XtDisplay(mainWidget));
}

void zPane::invalidate(zRect* rect, int erase) {
  currentDisplay->invalidate(rect, erase);
}

zDimension zPane::clientSize() const {
  const zDimension size = sizer()->size();
  if (!hasScrollBars()) {
    return size;
  }
  const zDimension bar = scrollBarExtents();
  return {size.width - bar.width, size.height - bar.height};
}
