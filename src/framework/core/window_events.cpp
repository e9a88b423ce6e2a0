// The road of X events: one procedure for all window widgets, which translates the event, offers it
// to handlers and then to the window's virtual operation. Any of these may destroy the window.

#include "framework/core/window.h"

#include <algorithm>
#include <cstdio>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/core/window_events_xm.h"
#include "framework/draw/x_handles.h"

#include <X11/IntrinsicP.h>

namespace {

zWindow* lastFocusWindow = nullptr;
Time lastPressTime = 0;

}  // namespace

void zWindow::zWindowEventProc(XEvent& xevent) {
  zEvent event;
  event.xevent = &xevent;
  switch (xevent.type) {
    case KeyPress:
      return keyPress(event);
    case KeyRelease:
      return keyRelease(event);
    case ButtonPress:
      return buttonPress(event);
    case ButtonRelease:
      event.message = kMsgButtonUp;
      return mouse(event, kMaskButtonUp, &zWindow::mouseButtonUp);
    case MotionNotify:
      event.message = kMsgMouseMove;
      return mouse(event, kMaskMouseMove, &zWindow::mouseMove);
    case FocusIn:
    case FocusOut:
      return isGrabFocusEvent(xevent) ? void() : focusChange(event);
    case UnmapNotify:
      return unmapped();
    case MapNotify:
      return mapped(event);
    case ConfigureNotify:
      return configured(event);
    default:
      // All other core events are ignored here; exposures have a procedure of their own.
      if (xevent.type < KeyPress || xevent.type > MappingNotify) {
        std::fputs("Invalid event type\n", stderr);
      }
  }
}

void zWindow::keyPress(zEvent& event) {
  const zKeyLookup key = lookUpKey(event.xevent->xkey);
  event.lparam = key.keysym;
  event.wparam = key.code();
  event.message = kMsgKeyDown;
  event.window = this;
  const ziAlive alive(this);
  if (zDispatch(event, this) != 0 || !alive) {
    return;
  }
  zApp* app = zApp::instance();
  if ((app != nullptr && app->translateAccelerator(&event) != 0) || !alive) {
    return;
  }
  event.wparam = key.character;
  event.message = kMsgChar;
  if (key.hasText) {
    character(&event);
  }
}

void zWindow::keyRelease(zEvent& event) {
  const zKeyLookup key = lookUpKey(event.xevent->xkey);
  event.lparam = key.keysym;
  event.wparam = key.code();
  event.message = kMsgKeyUp;
  event.window = this;
  zDispatch(event, this);
}

void zWindow::buttonPress(zEvent& event) {
  const XButtonEvent& press = event.xevent->xbutton;
  // One clock for all windows and buttons: a quick second press elsewhere is a double click too.
  const bool isSecond =
      press.time - lastPressTime < static_cast<Time>(XtGetMultiClickTime(press.display));
  lastPressTime = press.time;
  event.message = isSecond ? kMsgDoubleClick : kMsgButtonDown;
  const ziAlive alive(this);
  buttonPressNotify(&event);
  if (alive) {
    mouse(event, kMaskButtonDown, &zWindow::mouseButtonDown);
  }
}

void zWindow::mouse(zEvent& event, unsigned mask, Operation operation) {
  const ziAlive alive(this);
  if ((handlerMask & mask) != 0 && zDispatchHandlers(event, this) != 0) {
    return;
  }
  if (alive) {
    (this->*operation)(&event);
  }
}

void zWindow::focusChange(zEvent& event) {
  const bool isIn = event.xevent->type == FocusIn;
  event.message = isIn ? kMsgFocusIn : kMsgFocusOut;
  const ziAlive alive(this);
  const int taken = zDispatchHandlers(event, this);
  if (taken == 0 && alive) {
    focus(&event);
  }
  for (zWindow* up = isIn && alive ? parent() : nullptr; up != nullptr && alive;
       up = up->parent()) {
    up->childFocusChanged(lastFocusWindow, this);
  }
  if (alive) {
    lastFocusWindow = this;
  }
}

void zWindow::unmapped() {
  if (hasState(kDeleteOnUnmap)) {
    setState(kWidgetGone, true);
    delete this;
  }
}

void zWindow::mapped(zEvent& event) {
  if (!isRealized()) {
    return;
  }
  Display* display = XtDisplay(mainWidget);
  if (isA(kClassPane)) {
    Widget raised = scrollClip != nullptr ? scrollClip : mainWidget;
    XRaiseWindow(display, XtWindow(raised));
  }
  if (cursor == nullptr) {
    cursor = std::make_unique<zCursor>();
  }
  if (const zCursor shape = *cursor; shape.xCursor() != None) {
    XDefineCursor(display, XtWindow(mainWidget), shape.xCursor());
  }
  if (zApp::instance() == nullptr || zApp::instance()->mainWindow() != this) {
    return;
  }
  XEvent configure = configureOf(mainWidget);
  event.xevent = &configure;
  runResizeSequence(event);
}

void zWindow::configured(zEvent& event) {
  const ziAlive alive(this);
  if (isRealized()) {
    move(&event);
  }
  if (alive) {
    runResizeSequence(event);
  }
}

bool isGrabFocusEvent(const XEvent& event) {
  return event.xfocus.mode == NotifyGrab || event.xfocus.mode == NotifyUngrab;
}

void forgetFocusWindow(const zWindow* window) {
  if (lastFocusWindow == window) {
    lastFocusWindow = nullptr;
  }
}

zDimension widgetSize(Widget widget) {
  Dimension width = 0;
  Dimension height = 0;
  XtVaGetValues(widget, XmNwidth, &width, XmNheight, &height, nullptr);
  return {width, height};
}

Dimension toWidgetExtent(int pixels) {
  return static_cast<Dimension>(toXCoord(std::max(pixels, 1)));
}

void configureWidget(Widget widget, int x, int y, int width, int height) {
  Dimension border = 0;
  XtVaGetValues(widget, XmNborderWidth, &border, nullptr);
  XtConfigureWidget(widget, toXCoord(x), toXCoord(y), toWidgetExtent(width), toWidgetExtent(height),
                    border);
}

void applyBackground(const zWindow& window) {
  if (window.hasWidget() && window.background() != zWindow::kNoBackground) {
    XtVaSetValues(window.widget(), XmNbackground, static_cast<Pixel>(window.background()), nullptr);
  }
}

XEvent configureOf(Widget widget) {
  const zDimension size = widgetSize(widget);
  XEvent event = {};
  event.xconfigure.type = ConfigureNotify;
  event.xconfigure.width = size.width;
  event.xconfigure.height = size.height;
  return event;
}

zDimension configuredSize(const zEvent* event, const zDimension& otherwise) {
  if (event == nullptr || event->xevent == nullptr || event->xevent->type != ConfigureNotify) {
    return otherwise;
  }
  return {event->xevent->xconfigure.width, event->xevent->xconfigure.height};
}

zKeyLookup lookUpKey(XKeyEvent& event) {
  static XComposeStatus compose;
  char bytes[20] = {};
  KeySym keysym = NoSymbol;
  const int count = XLookupString(&event, bytes, sizeof bytes, &keysym, &compose);
  return {static_cast<long>(keysym), static_cast<signed char>(bytes[0]), count > 0};
}

bool isControlDown(unsigned state) {
  return (state & ControlMask) != 0;
}

bool isAltDown(unsigned state) {
  const zApp* app = zApp::instance();
  const unsigned known = app != nullptr ? app->altMask() : 0;
  return (state & (known != 0 ? known : Mod1Mask)) != 0;
}

bool isCommandState(unsigned state) {
  return isControlDown(state) || isAltDown(state);
}

bool isPlainTyping(const zKeyLookup& key, unsigned state) {
  constexpr unsigned char kDelete = 0x7F;
  const auto byte = static_cast<unsigned char>(key.character);
  return key.hasText && byte >= ' ' && byte != kDelete && !isCommandState(state);
}

// Scroll bars: their callbacks become scroll messages.

namespace {

struct ScrollStep {
  int code;
  int position;
};

ScrollStep scrollStep(const XmScrollBarCallbackStruct& data, const ziScrollBar& bar) {
  switch (data.reason) {
    case XmCR_INCREMENT:
      return {kScrollLineDown, bar.position() + bar.lineStep()};
    case XmCR_DECREMENT:
      return {kScrollLineUp, bar.position() - bar.lineStep()};
    case XmCR_PAGE_INCREMENT:
      return {kScrollPageDown, bar.position() + bar.pageStep()};
    case XmCR_PAGE_DECREMENT:
      return {kScrollPageUp, bar.position() - bar.pageStep()};
    case XmCR_TO_TOP:
      return {kScrollTop, bar.minimum()};
    case XmCR_TO_BOTTOM:
      return {kScrollBottom, bar.maximum()};
    case XmCR_DRAG:
      return {kScrollThumbTrack, data.value};
    default:
      return {kScrollThumbPosition, data.value};
  }
}

void scrollWindow(zWindow& window, ziScrollBar* bar, int message,
                  const XmScrollBarCallbackStruct& data) {
  if (bar != nullptr) {
    scrollByWidget(window, *bar, message, data);
  }
}

}  // namespace

void scrollByWidget(zWindow& window, ziScrollBar& bar, int message,
                    const XmScrollBarCallbackStruct& data) {
  const ScrollStep step = scrollStep(data, bar);
  zEvent event = zEvent::of(message, step.code);
  event.xevent = data.event;
  event.lparam = reinterpret_cast<std::intptr_t>(&bar);
  bar.setPosition(step.position);
  window.scroll(&event);
}

void zVertScrollProc(zWindow& window, XmScrollBarCallbackStruct* data) {
  scrollWindow(window, window.vertBar(), kMsgVertScroll, *data);
}

void zHorzScrollProc(zWindow& window, XmScrollBarCallbackStruct* data) {
  scrollWindow(window, window.horzBar(), kMsgHorzScroll, *data);
}
