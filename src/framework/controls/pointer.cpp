#include "framework/controls/pointer.h"

#include "framework/core/window.h"

#include <X11/Intrinsic.h>

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
