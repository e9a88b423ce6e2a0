// Scroll bars: their callbacks become scroll messages.

#include "framework/core/window.h"
#include "framework/core/window_events_xm.h"

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

void scrollWindow(zWindow* window, ziScrollBar* bar, int message, XtPointer data) {
  if (bar != nullptr) {
    scrollByWidget(*window, *bar, message, *static_cast<XmScrollBarCallbackStruct*>(data));
  }
}

constexpr const char* kScrollCallbacks[] = {
    XmNvalueChangedCallback,  XmNincrementCallback, XmNdecrementCallback, XmNpageIncrementCallback,
    XmNpageDecrementCallback, XmNtoTopCallback,     XmNtoBottomCallback,  XmNdragCallback,
};

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

void zVertScrollProc(Widget /*bar*/, XtPointer client, XtPointer data) {
  auto* window = static_cast<zWindow*>(client);
  scrollWindow(window, window->vertBar(), kMsgVertScroll, data);
}

void zHorzScrollProc(Widget /*bar*/, XtPointer client, XtPointer data) {
  auto* window = static_cast<zWindow*>(client);
  scrollWindow(window, window->horzBar(), kMsgHorzScroll, data);
}

void addScrollCallbacks(Widget bar, XtCallbackProc procedure, XtPointer window) {
  for (const char* name : kScrollCallbacks) {
    XtAddCallback(bar, const_cast<char*>(name), procedure, window);
  }
}

void removeScrollCallbacks(Widget bar, XtCallbackProc procedure, XtPointer window) {
  for (const char* name : kScrollCallbacks) {
    XtRemoveCallback(bar, const_cast<char*>(name), procedure, window);
  }
}
