// zWindow: construction, destruction, the window tree and the plain properties. The road of events
// is in window_dispatch.cpp and window_events.cpp, geometry and appearance in window_geometry.cpp.

#include "framework/core/window.h"

#include <utility>

#include "framework/core/application.h"
#include "framework/core/window_events_xm.h"

namespace {

constexpr unsigned long kFocusDelayMs = 150;

// Whether the menu bar of the widget's window has the keyboard, as after F10, with no menu open.
bool hasBarTheKeyboard(Widget widget) {
  Widget focus = XmGetFocusWidget(widget);
  if (focus != nullptr && !XmIsRowColumn(focus)) {
    focus = XtParent(focus);
  }
  if (focus == nullptr || !XmIsRowColumn(focus)) {
    return false;
  }
  unsigned char kind = XmWORK_AREA;
  XtVaGetValues(focus, XmNrowColumnType, &kind, nullptr);
  return kind == XmMENU_BAR;
}

}  // namespace

zWindow::zWindow(zWindow* parent, zSizer* sizer, std::uint32_t style)
    : ownSizer(sizer != nullptr ? sizer : new zSizer(nullptr)),
      styleBits(style | kStyleEveryWindow),
      parentWindow(parent) {
  markClass(kClassWindow);
  ownSizer->setWindow(this);
  if (parentWindow != nullptr) {
    parentWindow->childWindows.append(this);
  }
}

zWindow::~zWindow() {
  setState(kDeleteOnUnmap, false);
  cancelFocusTimer();
  forgetFocusWindow(this);
  endLife();
  if (parentWindow != nullptr) {
    parentWindow->childWindows.remove(this);
  }
  while (zWindow* child = childWindows.popFront()) {
    child->parentWindow = nullptr;
    delete child;
  }
  destroyWidgets();
}

void zWindow::destroyWidgets() {
  if (mainWidget == nullptr) {
    return;
  }
  disconnect<&zWindow::zWindowEventProc>(mainWidget, kWindowEvents, this);
  if (vertScrollWidget != nullptr) {
    disconnectScrollBar<zVertScrollProc>(vertScrollWidget, this);
  }
  if (horzScrollWidget != nullptr) {
    disconnectScrollBar<zHorzScrollProc>(horzScrollWidget, this);
  }
  if (hasState(kWidgetGone)) {
    return;
  }
  for (Widget bar : {vertScrollWidget, horzScrollWidget}) {
    if (bar != nullptr) {
      XtDestroyWidget(bar);
    }
  }
  setState(kWidgetGone, true);
  XtUnmanageChild(mainWidget);
  destroyWidgetDeferred(mainWidget);
}

bool zWindow::isRealized() const {
  return mainWidget != nullptr && XtIsRealized(mainWidget);
}

zWindow* zWindow::childById(int childId) {
  zWindowDlist::Iter walk(childWindows);
  while (zWindow* child = walk.next()) {
    if (child->windowId == childId) {
      return child;
    }
  }
  return nullptr;
}

zWindow* zWindow::defaultButton() {
  zWindowDlist::Iter walk(childWindows);
  while (zWindow* child = walk.next()) {
    if (child->isA(kClassButton) && (child->styleBits & kStyleSubtypeMask) == kButtonDefault) {
      return child;
    }
  }
  return nullptr;
}

void zWindow::startFocusTimer() {
  cancelFocusTimer();
  if (const zApp* app = zApp::instance(); app != nullptr) {
    focusTimer = connectTimeOut<&zWindow::focusTimerFired>(app->context(), kFocusDelayMs, this);
  }
}

void zWindow::cancelFocusTimer() {
  if (focusTimer != 0) {
    XtRemoveTimeOut(std::exchange(focusTimer, 0));
  }
}

void zWindow::focusTimerFired() {
  focusTimer = 0;
  if (!takeFocus()) {
    startFocusTimer();
  }
}

bool zWindow::takeFocus() {
  Widget target = inner != nullptr ? inner : mainWidget;
  // A focus change now would take the user out of the menus.
  if (zApp::isMenuPosted() || (target != nullptr && hasBarTheKeyboard(target))) {
    return false;
  }
  if (target != nullptr) {
    // Twice on purpose: with nested managers the first call only wakes the outer one.
    XmProcessTraversal(target, XmTRAVERSE_CURRENT);
    XmProcessTraversal(target, XmTRAVERSE_CURRENT);
  }
  return true;
}

int zWindow::childrenValid() {
  zWindowDlist::Iter walk(childWindows);
  while (zWindow* child = walk.next()) {
    if (!child->isEnabled() || child->childrenValid() != 0) {
      continue;
    }
    if (child->focusInvalidChild(child) == 0 && child->parentWindow != nullptr) {
      child->parentWindow->focusInvalidChild(child);
    }
    return 0;
  }
  return 1;
}

int zWindow::storeChildren() {
  if (childrenValid() == 0) {
    return 0;
  }
  zWindowDlist::Iter walk(childWindows);
  while (zWindow* child = walk.next()) {
    if (child->isEnabled()) {
      child->storeChildren();
    }
  }
  return 1;
}

int zWindow::focusInvalidChild(zWindow* child) {
  if (child == this) {
    return 0;
  }
  child->startFocusTimer();
  return 1;
}

int zWindow::childFocusChanged(zWindow* /*previous*/, zWindow* /*current*/) {
  return 1;
}

void zWindow::removeEventHandlers() {
  disconnect<&zWindow::zWindowEventProc>(mainWidget, kWindowEvents, this);
}
