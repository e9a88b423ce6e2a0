// Panes: creation, scroll bars, geometry. Painting is in pane_paint.cpp.

#include "framework/core/pane.h"

#include <utility>

#include "framework/core/window_events_xm.h"
#include "framework/draw/draw_obj.h"
#include "framework/draw/screen.h"

namespace {

constexpr int kLargestExtent = 5000;
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

zPane::zPane(zWindow* parent, zSizer* sizer, std::uint32_t style, int id, Create create)
    : zChildWin(parent, sizer, style),
      ziPainted(static_cast<zWindow&>(*this)),
      currentDisplay(ownDisplay.get()) {
  markClass(kClassPane);
  setClassName("PaneWindowCL");
  widgetName = "DrawingArea";
  setId(id);
  displayStack.push(ownDisplay.get());
  if (create == kCreateNow) {
    zPane::createWidgets();
  }
}

zPane::~zPane() {
  if (mainWidget != nullptr && !hasState(kWidgetGone)) {
    zPane::removeEventHandlers();
  }
}

void zPane::removeEventHandlers() {
  zChildWin::removeEventHandlers();
  disconnect<&ziPainted::zPaneExposeProc>(mainWidget, kExposures, this);
}

void zPane::createWidgets() {
  zPoint pos = sizer()->pos();
  zDimension size = sizer()->size();
  if (pos.x == kNotSet && pos.y == kNotSet) {
    pos = {};
  }
  // A size that was not set counts as too large, too.
  if (size.width > kLargestExtent || size.height > kLargestExtent) {
    size = theScreen().size();
  }
  const bool traversal = (style() & kStyleTabStop) != 0;
  mainWidget = XtVaCreateWidget(
      widgetName.c_str(), xmDrawingAreaWidgetClass, parent()->widget(), XmNx, pos.x, XmNy, pos.y,
      XmNwidth, toWidgetExtent(size.width), XmNheight, toWidgetExtent(size.height), XmNresizePolicy,
      XmRESIZE_NONE, XmNuserData, this, XmNmarginHeight, 0, XmNmarginWidth, 0, XmNborderWidth, 0,
      XmNtraversalOn, traversal ? True : False, nullptr);
  applyBackground(*this);
  if (traversal) {
    XtVaSetValues(mainWidget, XmNnavigationType, XmEXCLUSIVE_TAB_GROUP, nullptr);
  } else {
    XtVaSetValues(mainWidget, XmNtraversalOn, False, nullptr);
  }
  createScrollBars();
  connect<&zWindow::zWindowEventProc>(mainWidget, kWindowEvents, this);
  connect<&ziPainted::zPaneExposeProc>(mainWidget, kExposures, this);
  ownDisplay->setXWindow(XtWindow(mainWidget));
  takeParentsFont();
}

void zPane::setReachable(bool on) {
  if ((style() & kStyleTabStop) != 0) {
    XtVaSetValues(mainWidget, XmNtraversalOn, on ? True : False, nullptr);
  }
}

void zPane::createScrollBars() {
  // The bars are siblings of the pane.
  Widget holder = parent()->widget();
  if ((style() & (kStyleVertScroll | kStyleHorzScroll)) != 0) {
    scrollClip = mainWidget;
  }
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

void zPane::moveResize(int x, int y, int width, int height) {
  if (width == 0 || height == 0 || mainWidget == nullptr) {
    return;
  }
  if (vertScrollWidget != nullptr || horzScrollWidget != nullptr) {
    placeWithScrollBars(x, y, width, height);
    return;
  }
  configureWidget(mainWidget, x, y, width, height);
  Position tookX = 0;
  Position tookY = 0;
  Dimension tookWidth = 0;
  Dimension tookHeight = 0;
  XtVaGetValues(mainWidget, XmNx, &tookX, XmNy, &tookY, XmNwidth, &tookWidth, XmNheight,
                &tookHeight, nullptr);
  sizer()->setPos({tookX, tookY});
  sizer()->setSize({tookWidth, tookHeight});
}

void zPane::placeWithScrollBars(int x, int y, int width, int height) {
  const zDimension bar = scrollBarExtents();
  if (horzScrollWidget != nullptr) {
    configureWidget(horzScrollWidget, x, y + height - bar.height, width - bar.width, bar.height);
  }
  if (vertScrollWidget != nullptr) {
    configureWidget(vertScrollWidget, x + width - bar.width, y, bar.width, height - bar.height);
  }
  configureWidget(mainWidget, x, y, width - bar.width, height - bar.height);
  sizer()->setPos({x, y});
  sizer()->setSize({width, height});
}

void zPane::sizeChildren(zEvent* event) {
  zChildWin::sizeChildren(event);
  keepOuterSize(event);
}

int zPane::size(zEvent* event) {
  const int result = zChildWin::size(event);
  keepOuterSize(event);
  return result;
}

// The widget tells the size of what the scroll bars leave; the sizer's is that of all.
void zPane::keepOuterSize(const zEvent* event) {
  if (vertScrollWidget != nullptr || horzScrollWidget != nullptr) {
    const zDimension bar = scrollBarExtents();
    const zDimension unknown = {sizer()->size().width - bar.width,
                                sizer()->size().height - bar.height};
    const zDimension inside = configuredSize(event, unknown);
    sizer()->setSize({inside.width + bar.width, inside.height + bar.height});
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

void zPane::setShowState(int state) {
  for (Widget bar : {vertScrollWidget, horzScrollWidget}) {
    if (bar == nullptr) {
      continue;
    }
    if (state != kShowHide) {
      XtManageChild(bar);
    } else {
      XtUnmanageChild(bar);
    }
  }
  zWindow::setShowState(state);
}

void zPane::show(int state) {
  const bool wasShown = hasState(kShown);
  zChildWin::show(state);
  sizer()->update(nullptr);
  if (vertScrollWidget == nullptr && horzScrollWidget == nullptr) {
    return;
  }
  const zRect outer = sizer()->rect();
  moveResize(outer.left, outer.top, outer.width(), outer.height());
  if (!wasShown) {
    setShowState(state);
  }
}

int zPane::focus(zEvent* /*event*/) {
  return 0;
}

void zPane::setBackground(const zColor& colour) {
  zWindow::setBackground(colour);
  ownDisplay->setBackgroundBrush(std::make_unique<zBrush>(colour));
}

void zPane::setFont(const zRCFont& newFont, int redraw) {
  zChildWin::setFont(newFont, redraw);
  ownDisplay->setFont(fontHandle());
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

void zPane::pushDisplay(zDisplay* display) {
  displayStack.push(display);
  currentDisplay = display;
}

void zPane::popDisplay() {
  displayStack.pop();
  currentDisplay = displayStack.isEmpty() ? ownDisplay.get() : displayStack.top();
}
