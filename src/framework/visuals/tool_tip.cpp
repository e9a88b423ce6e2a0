// Tips. Motion, crossings and presses come straight from the watched widgets; a window that a
// handler destroys takes its event handlers along, and is noticed by its ziAlive. That the pointer
// has left is also looked at again and again, for a window that vanishes sends no crossing that can
// be relied on.

#include "framework/visuals/tool_tip.h"

#include <algorithm>

#include "framework/core/connect_xm.h"
#include "framework/core/window_events_xm.h"

/// A window that is watched. Stays when the window has gone: its widget may still have an event in
/// hand.
struct zToolTipCtrl::Watched {
  static constexpr zEventKinds kEvents{
      PointerMotionMask | EnterWindowMask | LeaveWindowMask | ButtonPressMask, false, XtListHead};

  Watched(zToolTipCtrl& owner, zWindow* watched)
      : control(owner), window(watched), alive(watched) {}
  void hear(XEvent& event);

  zToolTipCtrl& control;
  zWindow* window;
  ziAlive alive;
};

namespace {

zToolTipCtrl::Delays delays;

struct PointerPlace {
  zPoint onScreen;
  bool isInside = false;
};

PointerPlace pointerIn(Widget widget) {
  if (!XtIsRealized(widget)) {
    return {};
  }
  Window root = None;
  Window child = None;
  int rootX = 0;
  int rootY = 0;
  int x = 0;
  int y = 0;
  unsigned state = 0;
  XWindowAttributes attributes;
  if (XQueryPointer(XtDisplay(widget), XtWindow(widget), &root, &child, &rootX, &rootY, &x, &y,
                    &state) == False ||
      XGetWindowAttributes(XtDisplay(widget), XtWindow(widget), &attributes) == 0) {
    return {};
  }
  const bool isInside = attributes.map_state == IsViewable && x >= 0 && y >= 0 &&
                        x < attributes.width && y < attributes.height;
  return {{rootX, rootY}, isInside};
}

}  // namespace

// A handler of the window may have destroyed it; the widget is then still there.
void zToolTipCtrl::Watched::hear(XEvent& event) {
  if (!alive) {
    return;
  }
  switch (event.type) {
    case ButtonPress:
      control.endTip();
      break;
    case LeaveNotify:
      control.pointerLeft();
      break;
    default:
      control.pointerOver(window);
  }
}

zToolTipCtrl::zToolTipCtrl(zWindow* owner) : tipOwner(owner), ownerAlive(owner) {}

zToolTipCtrl::~zToolTipCtrl() {
  for (const auto& entry : watched) {
    if (entry->alive) {
      disconnect<&Watched::hear>(entry->window->widget(), Watched::kEvents, entry.get());
    }
  }
  if (helperAlive != nullptr && *helperAlive) {
    delete helper;
  }
}

void zToolTipCtrl::setDelays(const Delays& newDelays) {
  delays = newDelays;
}

void zToolTipCtrl::add(zWindow* window) {
  watched.push_back(std::make_unique<Watched>(*this, window));
  connect<&Watched::hear>(window->widget(), Watched::kEvents, watched.back().get());
}

bool zToolTipCtrl::isAlive(const zWindow* window) const {
  return std::any_of(watched.begin(), watched.end(),
                     [&](const auto& entry) { return entry->alive && entry->window == window; });
}

void zToolTipCtrl::setEnabled(bool on) {
  enabled = on;
  if (!enabled) {
    goAway();
  }
}

const ziToolHelper* zToolTipCtrl::shownTip() const {
  const bool isThere = helperAlive != nullptr && *helperAlive && helper->isShown();
  return isThere ? helper : nullptr;
}

Widget zToolTipCtrl::tipShell() const {
  const ziToolHelper* tip = shownTip();
  return tip == nullptr ? nullptr : tip->shell();
}

void zToolTipCtrl::pointerOver(zWindow* window) {
  if (window == currentWindow || window == shownWindow || !enabled || !ownerAlive) {
    return;
  }
  const bool isMovingOn = shownTip() != nullptr || isBetweenWindows();
  currentWindow = window;
  shownWindow = nullptr;
  if (isMovingOn) {
    showTip();
  }
  if (showTimer == nullptr) {
    showTimer = std::make_unique<zTimer>(this, &zToolTipCtrl::showTimerFired, delays.show);
  }
  hideTimer =
      std::make_unique<zTimer>(this, &zToolTipCtrl::hideTimerFired, delays.hide, zTimer::kOnce);
}

void zToolTipCtrl::pointerLeft() {
  const bool hadTip = shownTip() != nullptr;
  shownWindow = nullptr;
  goAway();
  if (hadTip) {
    // The tip of a window that the pointer gets to before this is over comes at once.
    showTimer = std::make_unique<zTimer>(this, &zToolTipCtrl::showTimerFired, delays.show);
  }
}

void zToolTipCtrl::endTip() {
  if (currentWindow != nullptr) {
    shownWindow = currentWindow;
    goAway();
  }
}

void zToolTipCtrl::goAway() {
  currentWindow = nullptr;
  showTimer.reset();
  hideTimer.reset();
  if (shownTip() != nullptr) {
    helper->hide();
  }
}

int zToolTipCtrl::showTimerFired(zEvH* control) {
  static_cast<zToolTipCtrl*>(control)->look();
  return 0;
}

void zToolTipCtrl::look() {
  if (!ownerAlive || !isAlive(currentWindow) || !pointerIn(currentWindow->widget()).isInside) {
    goAway();
  } else if (shownTip() == nullptr) {
    showTip();
  }
}

int zToolTipCtrl::hideTimerFired(zEvH* client) {
  static_cast<zToolTipCtrl*>(client)->endTip();
  return 0;
}

void zToolTipCtrl::showTip() {
  const char* text = textFor(currentWindow->id());
  if (text == nullptr) {
    goAway();
    return;
  }
  if (helperAlive == nullptr || !*helperAlive) {
    helper = new ziToolHelper(tipOwner);
    helperAlive = std::make_unique<ziAlive>(helper);
  }
  helper->showAt(pointerIn(currentWindow->widget()).onScreen, text);
}

const char* zToolTipCtrl::textFor(int id) const {
  for (const zToolTipText* row = table; row != nullptr && row->id != 0; ++row) {
    if (row->id == id) {
      return row->text;
    }
  }
  return nullptr;
}
