// The road of X events: one procedure for all window widgets, which translates the event, offers it
// to handlers and then to the window's virtual operation. Any of these may destroy the window.

#include <cstdio>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/core/window.h"
#include "framework/core/window_events_xm.h"

namespace {

zWindow* lastFocusWindow = nullptr;
Time lastPressTime = 0;

}  // namespace

/// The steps of zWindowEventProc, with access to what windows keep for themselves.
class ziEventRoad {
 public:
  static void run(zWindow* window, XEvent* xevent);
  static void forget(const zWindow* window) {
    if (lastFocusWindow == window) {
      lastFocusWindow = nullptr;
    }
  }

 private:
  using Operation = int (zWindow::*)(zEvent*);

  static void keyPress(zWindow* window, zEvent& event);
  static void keyRelease(zWindow* window, zEvent& event);
  static void buttonPress(zWindow* window, zEvent& event);
  static void mouse(zWindow* window, zEvent& event, unsigned mask, Operation operation);
  static void focusChange(zWindow* window, zEvent& event);
  static void unmapped(zWindow* window);
  static void mapped(zWindow* window, zEvent& event);
  static void configured(zWindow* window, zEvent& event);
};

void ziEventRoad::run(zWindow* window, XEvent* xevent) {
  zEvent event;
  event.xevent = xevent;
  switch (xevent->type) {
    case KeyPress:
      return keyPress(window, event);
    case KeyRelease:
      return keyRelease(window, event);
    case ButtonPress:
      return buttonPress(window, event);
    case ButtonRelease:
      event.message = kMsgButtonUp;
      return mouse(window, event, zWindow::kMaskButtonUp, &zWindow::mouseButtonUp);
    case MotionNotify:
      event.message = kMsgMouseMove;
      return mouse(window, event, zWindow::kMaskMouseMove, &zWindow::mouseMove);
    case FocusIn:
    case FocusOut:
      return isGrabFocusEvent(*xevent) ? void() : focusChange(window, event);
    case UnmapNotify:
      return unmapped(window);
    case MapNotify:
      return mapped(window, event);
    case ConfigureNotify:
      return configured(window, event);
    default:
      // All other core events are ignored here; exposures have a procedure of their own.
      if (xevent->type < KeyPress || xevent->type > MappingNotify) {
        std::fputs("Invalid event type\n", stderr);
      }
  }
}

void ziEventRoad::keyPress(zWindow* window, zEvent& event) {
  const zKeyLookup key = lookUpKey(event.xevent->xkey);
  event.lparam = key.keysym;
  event.wparam = key.code();
  event.message = kMsgKeyDown;
  event.window = window;
  const ziAlive alive(window);
  if (zDispatch(event, window) != 0 || !alive) {
    return;
  }
  zApp* app = zApp::instance();
  if ((app != nullptr && app->translateAccelerator(&event) != 0) || !alive) {
    return;
  }
  event.wparam = key.character;
  event.message = kMsgChar;
  if (key.hasText) {
    window->character(&event);
  }
}

void ziEventRoad::keyRelease(zWindow* window, zEvent& event) {
  const zKeyLookup key = lookUpKey(event.xevent->xkey);
  event.lparam = key.keysym;
  event.wparam = key.code();
  event.message = kMsgKeyUp;
  event.window = window;
  zDispatch(event, window);
}

void ziEventRoad::buttonPress(zWindow* window, zEvent& event) {
  const XButtonEvent& press = event.xevent->xbutton;
  // One clock for all windows and buttons: a quick second press elsewhere is a double click too.
  const bool isSecond =
      press.time - lastPressTime < static_cast<Time>(XtGetMultiClickTime(press.display));
  lastPressTime = press.time;
  event.message = isSecond ? kMsgDoubleClick : kMsgButtonDown;
  const ziAlive alive(window);
  window->buttonPressNotify(&event);
  if (alive) {
    mouse(window, event, zWindow::kMaskButtonDown, &zWindow::mouseButtonDown);
  }
}

void ziEventRoad::mouse(zWindow* window, zEvent& event, unsigned mask, Operation operation) {
  const ziAlive alive(window);
  if ((window->handlerMask & mask) != 0 && zDispatchHandlers(event, window) != 0) {
    return;
  }
  if (alive) {
    (window->*operation)(&event);
  }
}

void ziEventRoad::focusChange(zWindow* window, zEvent& event) {
  const bool isIn = event.xevent->type == FocusIn;
  event.message = isIn ? kMsgFocusIn : kMsgFocusOut;
  const ziAlive alive(window);
  const int taken = zDispatchHandlers(event, window);
  if (taken == 0 && alive) {
    window->focus(&event);
  }
  for (zWindow* up = isIn && alive ? window->parent() : nullptr; up != nullptr && alive;
       up = up->parent()) {
    up->childFocusChanged(lastFocusWindow, window);
  }
  if (alive) {
    lastFocusWindow = window;
  }
}

void ziEventRoad::unmapped(zWindow* window) {
  if (window->hasState(zWindow::kDeleteOnUnmap)) {
    window->setState(zWindow::kWidgetGone, true);
    delete window;
  }
}

void ziEventRoad::mapped(zWindow* window, zEvent& event) {
  Widget widget = window->widget();
  if (widget == nullptr || !XtIsRealized(widget)) {
    return;
  }
  Display* display = XtDisplay(widget);
  if (window->isA(kClassPane)) {
    Widget raised = window->scrollClip != nullptr ? window->scrollClip : widget;
    XRaiseWindow(display, XtWindow(raised));
  }
  if (window->cursor == nullptr) {
    window->cursor = std::make_unique<zCursor>();
  }
  if (const zCursor shape = *window->cursor; shape.xCursor() != None) {
    XDefineCursor(display, XtWindow(widget), shape.xCursor());
  }
  if (zApp::instance() == nullptr || zApp::instance()->mainWindow() != window) {
    return;
  }
  XEvent configure = configureOf(widget);
  event.xevent = &configure;
  window->runResizeSequence(event);
}

void ziEventRoad::configured(zWindow* window, zEvent& event) {
  const ziAlive alive(window);
  if (window->isRealized()) {
    window->move(&event);
  }
  if (alive) {
    window->runResizeSequence(event);
  }
}

bool isGrabFocusEvent(const XEvent& event) {
  return event.xfocus.mode == NotifyGrab || event.xfocus.mode == NotifyUngrab;
}

void forgetFocusWindow(const zWindow* window) {
  ziEventRoad::forget(window);
}

void zWindowEventProc(Widget /*widget*/, XtPointer window, XEvent* event, Boolean* /*toWidget*/) {
  ziEventRoad::run(static_cast<zWindow*>(window), event);
}

zDimension widgetSize(Widget widget) {
  Dimension width = 0;
  Dimension height = 0;
  XtVaGetValues(widget, XmNwidth, &width, XmNheight, &height, nullptr);
  return {width, height};
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

void setConfiguredHeight(zEvent& event, int height) {
  if (event.xevent != nullptr && event.xevent->type == ConfigureNotify) {
    event.xevent->xconfigure.height = height;
  }
}

zKeyLookup lookUpKey(XKeyEvent& event) {
  static XComposeStatus compose;
  char bytes[20] = {};
  KeySym keysym = NoSymbol;
  const int count = XLookupString(&event, bytes, sizeof bytes, &keysym, &compose);
  return {static_cast<long>(keysym), static_cast<signed char>(bytes[0]), count > 0};
}

bool isPlainTyping(const zKeyLookup& key, unsigned state) {
  constexpr unsigned char kDelete = 0x7F;
  const auto byte = static_cast<unsigned char>(key.character);
  const zApp* app = zApp::instance();
  const unsigned commandKeys = ControlMask | (app != nullptr ? app->altMask() : 0U);
  return key.hasText && byte >= ' ' && byte != kDelete && (state & commandKeys) == 0;
}
