#include "framework/controls/scroller.h"

#include "framework/controls/scroll_bar.h"
#include "framework/core/event.h"

namespace {

using Action = int (zScrollerBase::*)(zEvent*);

struct ActionRow {
  ScrollCode code;
  Action vertical;
  Action horizontal;
};

constexpr ActionRow kActions[] = {
    {kScrollLineUp, &zScrollerBase::vertLine, &zScrollerBase::horzLine},
    {kScrollLineDown, &zScrollerBase::vertLine, &zScrollerBase::horzLine},
    {kScrollPageUp, &zScrollerBase::vertPage, &zScrollerBase::horzPage},
    {kScrollPageDown, &zScrollerBase::vertPage, &zScrollerBase::horzPage},
    {kScrollThumbPosition, &zScrollerBase::vertThumbPosition, &zScrollerBase::horzThumbPosition},
    {kScrollThumbTrack, &zScrollerBase::vertThumbTrack, &zScrollerBase::horzThumbTrack},
    {kScrollTop, &zScrollerBase::vertTop, &zScrollerBase::horzTop},
    {kScrollBottom, &zScrollerBase::vertBottom, &zScrollerBase::horzBottom},
};

bool isScrollMessage(const zEvent& event) {
  return event.message == kMsgVertScroll || event.message == kMsgHorzScroll;
}

// Windows keep to themselves which scroller they have.
class ziScrolledWindow : public zWindow {
 public:
  static bool hasScroller(const zWindow& window) {
    return window.*(&ziScrolledWindow::scroller) != nullptr;
  }
};

}  // namespace

int zScrollerBase::vertThumbPosition(zEvent* /*event*/) {
  return 0;
}
int zScrollerBase::horzThumbPosition(zEvent* /*event*/) {
  return 0;
}
int zScrollerBase::beforeScroll(zEvent* /*event*/) {
  return 0;
}

void zScrollerBase::announce(zEvent* event) {
  if (event->wparam != kScrollEnd) {
    beforeScroll(event);
  }
}

zScrollPos* zScrollerBase::ownersPosition(int message) const {
  if (served == nullptr) {
    return nullptr;
  }
  if (auto* bar = windowCast<zScrollBarBase>(served); bar != nullptr) {
    return bar->scrollPos();
  }
  const ziScrollBar* wanted = message == kMsgVertScroll ? served->vertBar() : served->horzBar();
  zWindowDlist::Iter walk(served->children());
  while (zWindow* child = walk.next()) {
    auto* bar = windowCast<zScrollBarBase>(child);
    if (bar != nullptr && bar->scrollPos() == wanted) {
      return bar->scrollPos();
    }
  }
  return nullptr;
}

int zScrollerBase::dispatch(zEvent* event) {
  announce(event);
  if (!isScrollMessage(*event)) {
    return 0;
  }
  const zScrollPos* pos = ownersPosition(event->message);
  if (pos == nullptr) {
    return 0;
  }
  if (pos->previousPosition() == pos->position()) {
    return 1;
  }
  return ziScrolledWindow::hasScroller(*served) ? act(event) : 0;
}

int zScrollerBase::act(zEvent* event) {
  for (const ActionRow& row : kActions) {
    if (row.code == event->wparam) {
      return (this->*(event->message == kMsgVertScroll ? row.vertical : row.horizontal))(event);
    }
  }
  return 1;
}

int zControlScroller::dispatch(zEvent* event) {
  announce(event);
  return isScrollMessage(*event) ? act(event) : 0;
}
