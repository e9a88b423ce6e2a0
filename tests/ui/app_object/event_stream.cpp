#include "tests/ui/app_object/event_stream.h"

#include "tests/ui/support/test_application.h"

#include <X11/Intrinsic.h>

namespace {

std::function<void()>* handler = nullptr;

Boolean dispatched(XEvent* /*event*/) {
  (*handler)();
  return True;
}

}  // namespace

EventStream::EventStream(std::function<void()> handled) : action(std::move(handled)) {
  Display* const display = ui::display();
  window = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
  handler = &action;
  XtSetEventDispatcher(display, ClientMessage, dispatched);
}

EventStream::~EventStream() {
  XtSetEventDispatcher(ui::display(), ClientMessage, nullptr);
  XDestroyWindow(ui::display(), window);
}

void EventStream::post() {
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.format = 8;
  XSendEvent(ui::display(), window, False, NoEventMask, &event);
  XSync(ui::display(), False);
}
