// A user who drags the corner of a window makes the server tell sizes faster than they can be laid
// out, and only the last one counts. So a ConfigureNotify that a newer one of its window follows in
// the queue is dropped, before any widget hears of it.

#include "framework/core/configure_events_xm.h"

namespace {

// How far ahead a newer event is looked for, so that a long queue costs no more than a short one.
constexpr int kLookAhead = 256;

XtEventDispatchProc toolkitDispatcher = nullptr;

struct Search {
  const XConfigureEvent& event;
  int left;
  bool isFound;
};

// Takes no event out of the queue.
Bool look(Display* /*display*/, XEvent* queued, XPointer client) {
  auto& search = *reinterpret_cast<Search*>(client);
  if (search.left > 0 && !search.isFound) {
    --search.left;
    search.isFound = queued->type == ConfigureNotify &&
                     queued->xconfigure.event == search.event.event &&
                     queued->xconfigure.window == search.event.window;
  }
  return False;
}

bool isOld(XConfigureEvent& event) {
  Search search{event, kLookAhead, false};
  if (XEventsQueued(event.display, QueuedAfterReading) > 0) {
    XEvent none;
    XCheckIfEvent(event.display, &none, look, reinterpret_cast<XPointer>(&search));
  }
  return search.isFound;
}

// In its frame a shell knows its new size but not its place, which the toolkit would ask for twice.
void tellPlace(XConfigureEvent& event) {
  Widget widget = XtWindowToWidget(event.display, event.window);
  Window child = None;
  if (event.send_event == False && event.override_redirect == False && widget != nullptr &&
      XtIsShell(widget) && XtWindow(widget) == event.window &&
      XTranslateCoordinates(event.display, event.window, RootWindowOfScreen(XtScreen(widget)), 0, 0,
                            &event.x, &event.y, &child) != False) {
    event.send_event = True;
  }
}

Boolean dispatchConfigure(XEvent* event) {
  if (isOld(event->xconfigure)) {
    return True;
  }
  tellPlace(event->xconfigure);
  return toolkitDispatcher(event);
}

}  // namespace

void dropOldConfigureEvents(Display* display) {
  XtEventDispatchProc before = XtSetEventDispatcher(display, ConfigureNotify, dispatchConfigure);
  toolkitDispatcher = before == dispatchConfigure ? toolkitDispatcher : before;
}
