// Part of the framework's interface that this program does not use: panes with scroll bars of their
// own, and what scrolls in a pane. Compiled; its behaviour is not under test.

#include <algorithm>
#include <cstdlib>

#include "framework/core/pane.h"
#include "framework/core/window_events_xm.h"
#include "framework/draw/screen.h"

namespace {

constexpr int kScrollBarExtent = 16;  // until the bar's own extent is known
constexpr int kScrollMaximum = 100;

Widget createScrollBar(Widget parent, const char* name, unsigned char orientation) {
  return XtVaCreateWidget(name, xmScrollBarWidgetClass, parent, XmNorientation, orientation,
                          XmNminimum, 0, XmNmaximum, kScrollMaximum, XmNvalue, 0, XmNsliderSize, 1,
                          nullptr);
}

int realExtent(Widget bar, bool isVertical) {
  if (bar == nullptr) {
    return 0;
  }
  if (!XtIsRealized(bar)) {
    return kScrollBarExtent;
  }
  const zDimension size = widgetSize(bar);
  return isVertical ? size.width : size.height;
}

}  // namespace

void zPane::createScrollBars() {
  // The bars are siblings of the pane.
  Widget holder = parent()->widget();
  scrollClip = mainWidget;
  if ((style() & kStyleVertScroll) != 0) {
    vertScrollWidget = createScrollBar(holder, "ScrollbarV", XmVERTICAL);
    connectScrollBar<zVertScrollProc>(vertScrollWidget, this);
  }
  if ((style() & kStyleHorzScroll) != 0) {
    horzScrollWidget = createScrollBar(holder, "ScrollbarH", XmHORIZONTAL);
    connectScrollBar<zHorzScrollProc>(horzScrollWidget, this);
  }
}

zDimension zPane::scrollBarExtents() const {
  return {realExtent(vertScrollWidget, true), realExtent(horzScrollWidget, false)};
}

void zPane::placeWithScrollBars(const zRect& outer) {
  const zDimension bar = scrollBarExtents();
  const int width = outer.width() - bar.width;
  const int height = outer.height() - bar.height;
  if (horzScrollWidget != nullptr) {
    configureWidget(horzScrollWidget, outer.left, outer.bottom - bar.height, width, bar.height);
  }
  if (vertScrollWidget != nullptr) {
    configureWidget(vertScrollWidget, outer.right - bar.width, outer.top, bar.width, height);
  }
  configureWidget(mainWidget, outer.left, outer.top, width, height);
  sizer()->setPos({outer.left, outer.top});
  sizer()->setSize(outer.size());
}

void zPane::showScrollBars(int state) {
  for (Widget bar : {vertScrollWidget, horzScrollWidget}) {
    if (bar != nullptr) {
      (state != kShowHide ? XtManageChild : XtUnmanageChild)(bar);
    }
  }
}

void zPane::getExterior(zRect& rect) {
  zWindow::getExterior(rect);
  if (isRealized()) {
    const zDimension bar = scrollBarExtents();
    rect.right += bar.width;
    rect.bottom += bar.height;
  }
}

void zPane::keepOuterSize(const zEvent* event) {
  const zDimension bar = scrollBarExtents();
  const zDimension unknown = {sizer()->size().width - bar.width,
                              sizer()->size().height - bar.height};
  const zDimension inside = configuredSize(event, unknown);
  sizer()->setSize({inside.width + bar.width, inside.height + bar.height});
}

int zPane::scroll(zEvent* event) {
  if (scroller != nullptr) {
    return scroller->dispatchScroll(event);
  }
  if (event->wparam != kScrollEnd) {
    return 0;
  }
  const zPoint origin = currentDisplay->currentOrigin();
  const zPoint wanted = {horzBar() == nullptr ? -origin.x : horzBar()->position(),
                         vertBar() == nullptr ? -origin.y : vertBar()->position()};
  const int dx = -wanted.x - origin.x;
  const int dy = -wanted.y - origin.y;
  if (dx != 0 || dy != 0) {
    currentDisplay->setOrigin({-wanted.x, -wanted.y});
    scrollRect(dx, dy, zRect({}, theScreen().size()));
    update();
  }
  return 0;
}

void zPane::scrollRect(int dx, int dy, const zRect& rect) {
  update();
  if (!isRealized()) {
    return;
  }
  zRect area = rect;
  const zRect everything({}, theScreen().size());
  if (rect == everything) {
    area = zRect(zPoint{}, clientSize());
  }
  const zRect source(zPoint{area.left + (dx < 0 ? -dx : 0), area.top + (dy < 0 ? -dy : 0)},
                     area.size());
  ownDisplay->copyArea(source, {area.left + (dx > 0 ? dx : 0), area.top + (dy > 0 ? dy : 0)});
  const auto freeStrip = [this](zRect strip) {
    XClearArea(XtDisplay(mainWidget), XtWindow(mainWidget), strip.left, strip.top,
               static_cast<unsigned>(strip.width()), static_cast<unsigned>(strip.height()), True);
    ownDisplay->invalidate(&strip, 0);
  };
  if (dx != 0) {
    const int width = std::min(std::abs(dx), area.width());
    const int left = dx > 0 ? area.left : area.right - width;
    freeStrip(zRect(zPoint{left, area.top}, zDimension{width, area.height()}));
  }
  if (dy != 0) {
    const int height = std::min(std::abs(dy), area.height());
    const int top = dy > 0 ? area.top : area.bottom - height;
    freeStrip(zRect(zPoint{area.left, top}, zDimension{area.width(), height}));
  }
}
