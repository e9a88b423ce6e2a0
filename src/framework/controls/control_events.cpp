// The road of X events into a control. The procedure runs at the head of the widget's handlers, so
// what a handler takes can be kept from the widget. Any call to a handler or to a virtual operation
// may destroy the control.

#include "framework/controls/control_events_xm.h"

#include "framework/controls/control.h"
#include "framework/core/application.h"
#include "framework/core/window_events_xm.h"

/// The steps of zControlEventProc, with access to what controls keep for themselves.
class ziControlEvents {
 public:
  /// True if the event must not reach the widget.
  static bool run(zControl& control, XEvent* xevent);

 private:
  using Operation = int (zWindow::*)(zEvent*);

  static bool keyPress(zControl& control, zEvent& event);
  static bool offerKey(zControl& control, zEvent& event);
  static bool offerToDialog(zControl& control, zEvent& event);
  static void keyRelease(zControl& control, zEvent& event);
  static bool buttonPress(zControl& control, zEvent& event);
  static bool mouse(zControl& control, zEvent& event, int message, Operation operation);
  static void crossing(zControl& control, zEvent& event);
};

namespace {

Widget focusTarget(const zControl& control) {
  return control.innerWidget() != nullptr ? control.innerWidget() : control.widget();
}

}  // namespace

bool ziControlEvents::run(zControl& control, XEvent* xevent) {
  zEvent event;
  event.xevent = xevent;
  event.window = &control;
  switch (xevent->type) {
    case KeyPress:
      return keyPress(control, event);
    case KeyRelease:
      keyRelease(control, event);
      return false;
    case ButtonPress:
      return buttonPress(control, event);
    case ButtonRelease:
      return mouse(control, event, kMsgButtonUp, &zWindow::mouseButtonUp);
    case MotionNotify:
      return mouse(control, event, kMsgMouseMove, &zWindow::mouseMove);
    case FocusIn:
    case FocusOut:
      // Focus changes are those of any window, the tracking of the last one included.
      control.zWindowEventProc(*xevent);
      return false;
    case EnterNotify:
    case LeaveNotify:
      crossing(control, event);
      return false;
    default:
      return false;
  }
}

bool ziControlEvents::keyPress(zControl& control, zEvent& event) {
  XKeyEvent& press = event.xevent->xkey;
  const zKeyLookup key = lookUpKey(press);
  event.message = kMsgKeyDown;
  event.lparam = key.keysym;
  event.wparam = key.code();
  const ziAlive alive(&control);
  const bool isTyping = control.takesTyping() && isPlainTyping(key, press.state);
  if (isTyping ? control.typingArrived(event) != 0 : offerKey(control, event)) {
    return true;
  }
  event.wparam = key.hasText ? key.character : key.keysym;
  if (control.keyArrived(event, key.hasText) != 0 || !alive) {
    return true;
  }
  return offerToDialog(control, event) || !alive;
}

// Return and Escape mean the same in all controls of a dialog that don't use them themselves.
bool ziControlEvents::offerToDialog(zControl& control, zEvent& event) {
  zWindow* up = control.parent();
  while (up != nullptr && !up->isA(kClassDialogFrame)) {
    up = up->parent();
  }
  if (up == nullptr) {
    return false;
  }
  event.message = kMsgKeyDown;
  event.window = &control;
  return zDispatchHandlers(event, up) != 0;
}

bool ziControlEvents::offerKey(zControl& control, zEvent& event) {
  const ziAlive alive(&control);
  if (zDispatch(event, &control) != 0 || !alive) {
    return true;
  }
  zApp* app = zApp::instance();
  return (app != nullptr && app->translateAccelerator(&event) != 0) || !alive;
}

void ziControlEvents::keyRelease(zControl& control, zEvent& event) {
  if (control.takesTyping()) {
    return;
  }
  const zKeyLookup key = lookUpKey(event.xevent->xkey);
  event.message = kMsgKeyUp;
  event.lparam = key.keysym;
  event.wparam = key.code();
  zDispatch(event, &control);
}

bool ziControlEvents::buttonPress(zControl& control, zEvent& event) {
  return mouse(control, event, kMsgButtonDown, &zWindow::mouseButtonDown) ||
         control.pressArrived(event);
}

bool ziControlEvents::mouse(zControl& control, zEvent& event, int message, Operation operation) {
  event.message = message;
  const ziAlive alive(&control);
  if (zDispatchHandlers(event, &control) != 0 || !alive) {
    return true;
  }
  return (control.*operation)(&event) != 0 || !alive;
}

void ziControlEvents::crossing(zControl& control, zEvent& event) {
  // Message 0 on purpose: users of the generic hook tell a crossing by it.
  event.message = 0;
  control.handle(&event);
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

void zControlEventProc(Widget /*widget*/, XtPointer control, XEvent* event, Boolean* toWidget) {
  if (ziControlEvents::run(*static_cast<zControl*>(control), event)) {
    *toWidget = False;
  }
}

void zHolderEventProc(Widget holder, XtPointer control, XEvent* event, Boolean* /*toWidget*/) {
  // Structure events of a parent's own children come here as well when a child reports them.
  if (event->xany.window == XtWindow(holder)) {
    static_cast<zControl*>(control)->zWindowEventProc(*event);
  }
}
