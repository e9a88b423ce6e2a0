// Panes: creation and geometry. Painting is in pane_paint.cpp.

#include "framework/core/pane.h"

#include <utility>

#include "framework/core/window_events_xm.h"
#include "framework/draw/draw_obj.h"
#include "framework/draw/screen.h"

namespace {

constexpr int kLargestExtent = 5000;

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
  if ((style() & kStyleBothScrolls) != 0) {
    createScrollBars();
  }
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

void zPane::moveResize(int x, int y, int width, int height) {
  if (width == 0 || height == 0 || mainWidget == nullptr) {
    return;
  }
  if (hasScrollBars()) {
    placeWithScrollBars(zRect(zPoint{x, y}, zDimension{width, height}));
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

void zPane::sizeChildren(zEvent* event) {
  zChildWin::sizeChildren(event);
  if (hasScrollBars()) {
    keepOuterSize(event);
  }
}

int zPane::size(zEvent* event) {
  const int result = zChildWin::size(event);
  if (hasScrollBars()) {
    keepOuterSize(event);
  }
  return result;
}

void zPane::setShowState(int state) {
  if (hasScrollBars()) {
    showScrollBars(state);
  }
  zWindow::setShowState(state);
}

void zPane::show(int state) {
  const bool wasShown = hasState(kShown);
  zChildWin::show(state);
  sizer()->update(nullptr);
  if (hasScrollBars()) {
    const zRect outer = sizer()->rect();
    moveResize(outer.left, outer.top, outer.width(), outer.height());
    if (!wasShown) {
      setShowState(state);
    }
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
