#include "tests/e2e/app/user.h"

#include "tests/support/child_process.h"

#include <X11/keysym.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>

User::User() : screen::User(XOpenDisplay(nullptr)) {
  // Windows may go before what is asked of them.
  XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
}

User::~User() {
  XCloseDisplay(display());
}

void User::selectAll(Window window) {
  const screen::ScreenArea area = areaOf(window);
  moveTo(area.x + area.width / 2, area.y + area.height / 2);
  button(screen::kLeftButton, true);
  button(screen::kLeftButton, false);
  press(XK_slash, screen::kControl);
}

std::string User::selection() {
  const Window holder =
      XCreateSimpleWindow(display(), DefaultRootWindow(display()), 0, 0, 1, 1, 0, 0, 0);
  XConvertSelection(display(), XA_PRIMARY, XA_STRING, XA_STRING, holder, CurrentTime);
  XEvent event;
  const auto hasAnswer = [&] {
    return XCheckTypedWindowEvent(display(), holder, SelectionNotify, &event) != False;
  };
  waitFor(hasAnswer, "the selected text");
  constexpr long kLargest = 1L << 20;
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display(), holder, XA_STRING, 0, kLargest, False, XA_STRING, &type, &format,
                     &count, &left, &data);
  std::string text = data != nullptr ? std::string(data, data + count) : "";
  XFree(data);
  XDestroyWindow(display(), holder);
  return text;
}
