#include "framework/core/child.h"

#include "framework/core/window_events_xm.h"
#include "framework/layout/size_with_parent.h"

namespace {

constexpr int kDefaultExtent = 10;

}  // namespace

zChildWin::zChildWin(zWindow* parent, zSizer* sizer, std::uint32_t style)
    : zWindow(parent, sizer != nullptr ? sizer : new zSizeWithParent(parent->sizer()), style) {
  markClass(kClassChildWin);
}

int zChildWin::character(zEvent* /*event*/) {
  return 0;
}

void zChildWin::createWidgets() {
  if (sizer()->size().width == kNotSet || sizer()->size().height == kNotSet) {
    sizer()->setSize({kDefaultExtent, kDefaultExtent});
  }
  const zDimension size = sizer()->size();
  mainWidget = XtVaCreateWidget("DrawingArea", xmDrawingAreaWidgetClass, parent()->widget(),
                                XmNuserData, this, XmNmarginWidth, 0, XmNmarginHeight, 0, XmNwidth,
                                size.width, XmNheight, size.height, nullptr);
  zRect place;
  getExterior(place);
  if ((style() & kStyleAbsolute) == 0) {
    zRect outer;
    parent()->getExterior(outer);
    place.moveBy(-outer.left, -outer.top);
  }
  sizer()->setPos(place.pos());
  connect<&zWindow::zWindowEventProc>(mainWidget, kWindowEvents, this);
  if (parent()->fontObject() != nullptr) {
    setFont(parent()->fontHandle(), 0);
  }
}

void zChildWin::show(int state) {
  const bool isFirst = !hasState(kShown);
  zWindow::show(state);
  if (!isFirst || mainWidget == nullptr) {
    return;
  }
  if (state != kShowHide) {
    XtManageChild(mainWidget);
  } else {
    XtUnmanageChild(mainWidget);
  }
}
