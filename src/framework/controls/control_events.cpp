// The road of X events into a control. The procedure runs at the head of the widget's handlers, so
// what a handler takes can be kept from the widget. Any call to a handler or to a virtual operation
// may destroy the control.

#include "framework/controls/control.h"
#include "framework/core/application.h"
#include "framework/core/window_events_xm.h"

namespace {

Widget focusTarget(const zControl& control) {
  return control.innerWidget() != nullptr ? control.innerWidget() : control.widget();
}

}  // namespace

void zControl::onHolderEvent(XEvent& xevent) {
  // Structure events of a parent's own children come here as well when a child reports them.
  if (xevent.xany.window == XtWindow(outerForm)) {
    zWindowEventProc(xevent);
  }
}

bool zControl::onWidgetEvent(XEvent& xevent) {
  zEvent event;
  event.xevent = &xevent;
  event.window = this;
  switch (xevent.type) {
    case KeyPress:
      return takeKey(event);
    case KeyRelease:
      offerKeyRelease(event);
      return false;
    case ButtonPress:
      return offerMouse(event, kMsgButtonDown, &zWindow::mouseButtonDown) || pressArrived(event);
    case ButtonRelease:
      return offerMouse(event, kMsgButtonUp, &zWindow::mouseButtonUp);
    case MotionNotify:
      return offerMouse(event, kMsgMouseMove, &zWindow::mouseMove);
    case FocusIn:
    case FocusOut:
      // Focus changes are those of any window, the tracking of the last one included.
      zWindowEventProc(xevent);
      return false;
    case EnterNotify:
    case LeaveNotify:
      // Message 0 on purpose: users of the generic hook tell a crossing by it.
      handle(&event);
      return false;
    default:
      return false;
  }
}

bool zControl::takeKey(zEvent& event) {
  // Who gets a key has the focus. Taking it later once more would bring the user back from where
  // this key leads him.
  cancelFocusTimer();
  XKeyEvent& press = event.xevent->xkey;
  const zKeyLookup key = lookUpKey(press);
  event.message = kMsgKeyDown;
  event.lparam = key.keysym;
  event.wparam = key.code();
  const ziAlive alive(this);
  const bool isTyping = takesTyping() && isPlainTyping(key, press.state);
  if (isTyping ? typingArrived(event) != 0 : offerKey(event)) {
    return true;
  }
  event.wparam = key.hasText ? key.character : key.keysym;
  if (keyArrived(event, key.hasText) != 0 || !alive) {
    return true;
  }
  return offerToDialog(event) || !alive;
}

bool zControl::offerKey(zEvent& event) {
  const ziAlive alive(this);
  if (zDispatch(event, this) != 0 || !alive) {
    return true;
  }
  zApp* app = zApp::instance();
  return (app != nullptr && app->translateAccelerator(&event) != 0) || !alive;
}

// Return and Escape mean the same in all controls of a dialog that don't use them themselves.
bool zControl::offerToDialog(zEvent& event) {
  zWindow* up = parent();
  while (up != nullptr && !up->isA(kClassDialogFrame)) {
    up = up->parent();
  }
  if (up == nullptr) {
    return false;
  }
  event.message = kMsgKeyDown;
  event.window = this;
  return zDispatchHandlers(event, up) != 0;
}

void zControl::offerKeyRelease(zEvent& event) {
  if (takesTyping()) {
    return;
  }
  const zKeyLookup key = lookUpKey(event.xevent->xkey);
  event.message = kMsgKeyUp;
  event.lparam = key.keysym;
  event.wparam = key.code();
  zDispatch(event, this);
}

bool zControl::offerMouse(zEvent& event, int message, Operation operation) {
  event.message = message;
  const ziAlive alive(this);
  if (zDispatchHandlers(event, this) != 0 || !alive) {
    return true;
  }
  return (this->*operation)(&event) != 0 || !alive;
}

bool zControl::pressArrived(zEvent& event) {
  const unsigned button = event.xevent->xbutton.button;
  const ziAlive alive(this);
  if (button == Button1 || button == Button2) {
    XmProcessTraversal(focusTarget(*this), XmTRAVERSE_CURRENT);
  }
  return !alive;
}

// Not by the focus timer: the key that is typed next must find the focus here.
void zControl::takeKeyPress(const zEvent& press) {
  Widget target = focusTarget(*this);
  XmProcessTraversal(target, XmTRAVERSE_CURRENT);
  XEvent redirected = *press.xevent;
  redirected.xkey.window = XtWindow(target);
  XtDispatchEventToWidget(target, &redirected);
}

zPointer pointerOf(const zEvent& event) {
  const XEvent* xevent = event.xevent;
  if (xevent == nullptr || (xevent->type != ButtonPress && xevent->type != ButtonRelease)) {
    return {};
  }
  return {xevent->xbutton.button, {xevent->xbutton.x, xevent->xbutton.y}};
}

void grabPointer(const zWindow& window) {
  constexpr unsigned kMouseEvents =
      ButtonPressMask | ButtonReleaseMask | ButtonMotionMask | EnterWindowMask | LeaveWindowMask;
  XtGrabPointer(window.widget(), False, kMouseEvents, GrabModeAsync, GrabModeAsync, None, None,
                CurrentTime);
}

void releasePointer(const zWindow& window) {
  XtUngrabPointer(window.widget(), CurrentTime);
}

bool isReleaseLost(const zWindow& window) {
  Display* display = XtDisplay(window.widget());
  Window root = None;
  Window child = None;
  zPoint onScreen;
  zPoint inWindow;
  unsigned state = 0;
  XQueryPointer(display, XtWindow(window.widget()), &root, &child, &onScreen.x, &onScreen.y,
                &inWindow.x, &inWindow.y, &state);
  return (state & Button1Mask) == 0 && XEventsQueued(display, QueuedAlready) == 0;
}
