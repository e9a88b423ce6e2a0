// Scroll bars. The position object holds what counts; the widget only shows it. The widget's
// maximum is that of the range plus the slider's size, so that the slider reaches the last
// position.

#include "framework/controls/scroll_bar.h"

#include <algorithm>
#include <utility>

#include "framework/controls/widgets_xm.h"
#include "framework/core/event.h"
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

using Action = int (zScrollerBase::*)(zEvent*);

struct ActionRow {
  ScrollCode code;
  Action vertical;
  Action horizontal;
};

constexpr ActionRow kActions[] = {
    {kScrollLineUp, &zScrollerBase::vertLine, &zScrollerBase::horzLine},
    {kScrollLineDown, &zScrollerBase::vertLine, &zScrollerBase::horzLine},
    {kScrollPageUp, &zScrollerBase::vertPage, &zScrollerBase::horzPage},
    {kScrollPageDown, &zScrollerBase::vertPage, &zScrollerBase::horzPage},
    {kScrollThumbPosition, &zScrollerBase::vertThumbPosition, &zScrollerBase::horzThumbPosition},
    {kScrollThumbTrack, &zScrollerBase::vertThumbTrack, &zScrollerBase::horzThumbTrack},
    {kScrollTop, &zScrollerBase::vertTop, &zScrollerBase::horzTop},
    {kScrollBottom, &zScrollerBase::vertBottom, &zScrollerBase::horzBottom},
};

bool isScrollMessage(const zEvent& event) {
  return event.message == kMsgVertScroll || event.message == kMsgHorzScroll;
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

template <class Data>
void zScrollBarBase::onScrolled(Data* data) {
  scrollByWidget(*this, *pos, scrollMessage(), *data);
}

zScrollBarBase::~zScrollBarBase() {
  disconnectScrollBar<&zScrollBarBase::onScrolled<XmScrollBarCallbackStruct>>(widget(), this);
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
  Widget bar = XtVaCreateWidget("Scrollbar", xmScrollBarWidgetClass, holder, XmNwidth,
                                toWidgetExtent(size.width), XmNheight, toWidgetExtent(size.height),
                                XmNorientation, isVertical ? XmVERTICAL : XmHORIZONTAL,
                                XmNsliderSize, 1, XmNminimum, 0, XmNmaximum, kFirstMaximum,
                                XmNvalue, 0, XmNtraversalOn, isTabStop(style()), nullptr);
  finishCreation(kKindScrollBar, bar);
  connectScrollBar<&zScrollBarBase::onScrolled<XmScrollBarCallbackStruct>>(widget(), this);
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

int zScrollerBase::vertThumbPosition(zEvent* /*event*/) {
  return 0;
}
int zScrollerBase::horzThumbPosition(zEvent* /*event*/) {
  return 0;
}
int zScrollerBase::beforeScroll(zEvent* /*event*/) {
  return 0;
}

void zScrollerBase::announce(zEvent* event) {
  if (event->wparam != kScrollEnd) {
    beforeScroll(event);
  }
}

int zScrollerBase::act(zEvent* event) {
  for (const ActionRow& row : kActions) {
    if (row.code == event->wparam) {
      return (this->*(event->message == kMsgVertScroll ? row.vertical : row.horizontal))(event);
    }
  }
  return 1;
}

int zControlScroller::dispatch(zEvent* event) {
  announce(event);
  return isScrollMessage(*event) ? act(event) : 0;
}
