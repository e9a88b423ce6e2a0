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
