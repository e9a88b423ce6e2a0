#include "tests/e2e/app/user.h"

#include <X11/Xlib.h>

User::User() : screen::User(XOpenDisplay(nullptr)) {
  // Windows may go before what is asked of them.
  XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
}

User::~User() {
  XCloseDisplay(display());
}
