// Scroll bars. The position object holds what counts; the widget only shows it. The widget's
// maximum is that of the range plus the slider's size, so that the slider reaches the last
// position.

#include "framework/controls/scroll_bar.h"

#include <algorithm>
#include <utility>

#include "framework/controls/scroller.h"
#include "framework/core/connect_xm.h"
#include "framework/core/window_events_xm.h"
#include "framework/layout/sizers.h"

namespace {

constexpr int kBarThickness = 16;
constexpr int kUnknownLength = 100;
constexpr int kFirstMaximum = 100;
constexpr int kWheelLines = 3;  // what the widget does when the wheel turns over it

zDimension unknownSize(bool isVertical) {
  return isVertical ? zDimension{kBarThickness, kUnknownLength}
                    : zDimension{kUnknownLength, kBarThickness};
}

bool isVerticalStyle(std::uint32_t style) {
  return (style & (kScrollBarVertical | kStyleVertScroll)) != 0;
}

// Neighbours that grow later must not cover the bar.
void raiseWhenMapped(Widget holder, XtPointer /*client*/, XEvent* event, Boolean* /*toWidget*/) {
  if (event->type == MapNotify && event->xmap.window == XtWindow(holder)) {
    XRaiseWindow(XtDisplay(holder), XtWindow(holder));
  }
}

struct WheelTurn {
  int lines = 0;
  bool isVertical = true;
};

WheelTurn wheelTurn(const XButtonEvent& press) {
  enum : unsigned { kWheelUp = 4, kWheelDown = 5, kWheelLeft = 6, kWheelRight = 7 };
  const bool isUpright = (press.state & ShiftMask) == 0;
  switch (press.button) {
    case kWheelUp:
      return {-kWheelLines, isUpright};
    case kWheelDown:
      return {kWheelLines, isUpright};
    case kWheelLeft:
      return {-kWheelLines, false};
    case kWheelRight:
      return {kWheelLines, false};
    default:
      return {};
  }
}

}  // namespace

void zScrollPos::setRange(int minimum, int maximum) {
  limits = {minimum, maximum};
  if (current < minimum || current > maximum) {
    current = minimum;
  }
  showRange();
}

void zScrollPos::setPage(int newPage) {
  pageSize = std::max(newPage, 1);
  showRange();
}

void zScrollPos::setLine(int newLine) {
  lineSize = newLine;
  if (Widget shown = bar.widget(); shown != nullptr) {
    XtVaSetValues(shown, XmNincrement, std::max(lineSize, 1), nullptr);
  }
}

void zScrollPos::setPosition(int newPosition) {
  // In this order: of a reversed range the minimum remains.
  const int clamped = std::max(std::min(newPosition, limits.maximum), limits.minimum);
  previous = std::exchange(current, clamped);
  Widget shown = bar.widget();
  if (shown == nullptr) {
    return;
  }
  // Until the first setRange or setPage the widget has its own small slider.
  int end = 0;
  int slider = 0;
  XtVaGetValues(shown, XmNmaximum, &end, XmNsliderSize, &slider, nullptr);
  XtVaSetValues(shown, XmNvalue, std::min(current, end - slider), nullptr);
}

void zScrollPos::showRange() const {
  if (Widget shown = bar.widget(); shown != nullptr) {
    const auto [low, high] = std::minmax(limits.minimum, limits.maximum);
    XtVaSetValues(shown, XmNsliderSize, pageSize, XmNpageIncrement, pageSize, XmNminimum, low,
                  XmNvalue, current, XmNmaximum, high + pageSize, nullptr);
  }
}

/// What the scroll bar widget reports. The control may be gone after each report.
class ziScrollBarCallbacks {
 public:
  explicit ziScrollBarCallbacks(zScrollBarBase& owner) : bar(owner), widget(owner.widget()) {
    for (const auto& name : callback::scrollBar) {
      connect<&ziScrollBarCallbacks::scrolled>(widget, name, this);
    }
  }
  ziScrollBarCallbacks(const ziScrollBarCallbacks&) = delete;
  ziScrollBarCallbacks& operator=(const ziScrollBarCallbacks&) = delete;
  ~ziScrollBarCallbacks() {
    for (const auto& name : callback::scrollBar) {
      disconnect<&ziScrollBarCallbacks::scrolled>(widget, name, this);
    }
  }

 private:
  void scrolled(XmScrollBarCallbackStruct* data) {
    scrollByWidget(bar, *bar.scrollPos(), bar.scrollMessage(), *data);
  }

  zScrollBarBase& bar;
  Widget widget;
};

zScrollBarBase::zScrollBarBase(zWindow* parent, zSizer* sizer, std::uint32_t style,
                               const char* text, int id, Belonging belonging)
    : zControl(parent, sizer, style, text, id),
      positionHolder(belonging == Belonging::toParent ? parent : this) {
  markClass(kClassScrollBarBase);
  auto position = std::make_unique<zScrollPos>(*this);
  pos = position.get();
  const bool isVertical = isVerticalStyle(style);
  if (isVertical) {
    positionHolder->setVertBar(std::move(position));
  } else {
    positionHolder->setHorzBar(std::move(position));
  }
  createBar(isVertical);
}

zScrollBarBase::~zScrollBarBase() {
  callbacks.reset();
  if (isPressed && !hasState(kWidgetGone)) {
    // The widget grabs the keyboard from press to release, and the toolkit would keep that grab for
    // a widget that is gone.
    XtUngrabKeyboard(widget(), CurrentTime);
  }
  // The parent must not keep the position of a bar that is gone.
  if (positionHolder->vertBar() == pos) {
    positionHolder->setVertBar(nullptr);
  } else if (positionHolder->horzBar() == pos) {
    positionHolder->setHorzBar(nullptr);
  }
}

void zScrollBarBase::createBar(bool isVertical) {
  Widget holder = createHolder(HolderClass::form, unknownSize(isVertical));
  XtAddEventHandler(holder, StructureNotifyMask, False, raiseWhenMapped, nullptr);
  const zDimension size = sizer()->size();
  const Boolean isTabStop = (style() & kStyleTabStop) != 0 ? True : False;
  Widget bar =
      XtVaCreateWidget("Scrollbar", xmScrollBarWidgetClass, holder, XmNwidth,
                       std::max(size.width, 1), XmNheight, std::max(size.height, 1), XmNorientation,
                       isVertical ? XmVERTICAL : XmHORIZONTAL, XmNsliderSize, 1, XmNminimum, 0,
                       XmNmaximum, kFirstMaximum, XmNvalue, 0, XmNtraversalOn, isTabStop, nullptr);
  finishCreation(kKindScrollBar, bar);
  callbacks = std::make_unique<ziScrollBarCallbacks>(*this);
}

int zScrollBarBase::scrollMessage() const {
  unsigned char orientation = XmVERTICAL;
  XtVaGetValues(widget(), XmNorientation, &orientation, nullptr);
  return orientation == XmVERTICAL ? kMsgVertScroll : kMsgHorzScroll;
}

void zScrollBarBase::setScroller(zScrollerBase* newScroller) {
  zControl::setScroller(newScroller);
  if (newScroller != nullptr) {
    newScroller->setOwner(this);
  }
}

int zScrollBarBase::scroll(zEvent* event) {
  return scroller != nullptr ? scroller->dispatchScroll(event) : parent()->scroll(event);
}

int zScrollBarBase::mouseButtonDown(zEvent* /*event*/) {
  isPressed = true;
  return 0;
}

int zScrollBarBase::mouseButtonUp(zEvent* /*event*/) {
  isPressed = false;
  return 0;
}

int zScrollBarBase::scrollLines(int lines, XEvent* xevent) {
  zEvent event = zEvent::of(scrollMessage(), lines < 0 ? kScrollLineUp : kScrollLineDown);
  event.xevent = xevent;
  event.lparam = reinterpret_cast<std::intptr_t>(static_cast<ziScrollBar*>(pos));
  pos->setPosition(pos->position() + lines * pos->line());
  return scroll(&event);
}

void zScrollBarBase::takeWheelOf(zWindow& window) {
  // To a window, notches in quick succession are double clicks.
  for (const int message : {kMsgButtonDown, kMsgDoubleClick}) {
    window.addHandler(this, toHandler(&zScrollBarBase::wheelTurned), message);
  }
}

int zScrollBarBase::wheelTurned(zEvent* event) {
  if (event->xevent == nullptr || event->xevent->type != ButtonPress || !isEnabled()) {
    return 0;
  }
  const WheelTurn turn = wheelTurn(event->xevent->xbutton);
  if (turn.lines == 0 || turn.isVertical != (scrollMessage() == kMsgVertScroll)) {
    return 0;
  }
  scrollLines(turn.lines, event->xevent);
  return 1;
}

zScrollBarCtrl::zScrollBarCtrl(zWindow* parent, zSizer* sizer, std::uint32_t style,
                               const char* text, int id)
    : zScrollBarBase(parent, sizer, style, text, id, Belonging::toItself) {
  markClass(kClassScrollBarCtrl);
}

zScrollBarVert::zScrollBarVert(zWindow* window, int id)
    : zScrollBarBase(window, new zGravSizer(kGravityRight, kBarThickness, window->sizer()),
                     kStyleHorzScroll | kScrollBarVertical, "", id, Belonging::toParent) {
  markClass(kClassScrollBarVert);
}

zScrollBarHorz::zScrollBarHorz(zWindow* window, int id)
    : zScrollBarBase(window, new zGravSizer(kGravityBottom, kBarThickness, window->sizer()),
                     kStyleHorzScroll, "", id, Belonging::toParent) {
  markClass(kClassScrollBarHorz);
}
