// Child windows, and the end of widgets.

#include <cstring>
#include <set>

#include "framework/core/application.h"
#include "framework/core/frame.h"
#include "framework/core/window.h"
#include "framework/core/window_events_xm.h"
#include "framework/layout/sizers.h"

zChildWin::zChildWin(zWindow* parent, zSizer* sizer, std::uint32_t style)
    : zWindow(parent, sizer != nullptr ? sizer : new zSizeWithParent(parent->sizer()), style) {
  markClass(kClassChildWin);
}

int zChildWin::character(zEvent* /*event*/) {
  return 0;
}

void zChildWin::show(int state) {
  const bool isFirst = !hasState(kShown);
  zWindow::show(state);
  if (!isFirst || mainWidget == nullptr) {
    return;
  }
  if (state != kShowHide) {
    XtManageChild(mainWidget);
  } else {
    XtUnmanageChild(mainWidget);
  }
}

// Deferred destruction: a widget may not be destroyed inside its own event or callback, so it dies
// by a message that the program sends to itself.

namespace {

// The message carries the pointer itself, all of its bytes.
constexpr std::size_t kPointerBytes = sizeof(void*);
static_assert(kPointerBytes <= sizeof XClientMessageEvent::data.b);

Atom destroyerAtom = None;
Widget hookedShell = nullptr;

// Widgets whose message is on its way. One that dies with its parent before that leaves the set, so
// that the message finds nothing to destroy.
std::set<Widget>& pendingWidgets() {
  static std::set<Widget> widgets;
  return widgets;
}

void forgetPending(Widget widget, XtPointer /*data*/, XtPointer /*callData*/) {
  pendingWidgets().erase(widget);
}

void destroyerProc(Widget /*shell*/, XtPointer /*data*/, XEvent* event, Boolean* /*toWidget*/) {
  if (event->type != ClientMessage || event->xclient.message_type != destroyerAtom) {
    return;
  }
  Widget widget = nullptr;
  std::memcpy(&widget, event->xclient.data.b, kPointerBytes);
  if (pendingWidgets().count(widget) != 0) {
    XtDestroyWidget(widget);
  }
}

void forgetShell(Widget /*shell*/, XtPointer /*data*/, XtPointer /*callData*/) {
  hookedShell = nullptr;
}

// The main window's shell outlives all others, so the message cannot get lost with a dialog.
Widget carrierShell() {
  const zApp* app = zApp::instance();
  if (app == nullptr) {
    return nullptr;
  }
  return app->mainWindow() != nullptr ? app->mainWindow()->shell() : app->topShell();
}

bool hookShell(Widget shell) {
  if (destroyerAtom == None) {
    destroyerAtom = XInternAtom(XtDisplay(shell), "ZAPP_DEFERED_DESTROYER", False);
  }
  if (destroyerAtom == None) {
    return false;
  }
  if (hookedShell != shell) {
    XtAddEventHandler(shell, NoEventMask, True, destroyerProc, nullptr);
    XtAddCallback(shell, const_cast<char*>(XmNdestroyCallback), forgetShell, nullptr);
    hookedShell = shell;
  }
  return true;
}

}  // namespace

void destroyWidgetDeferred(Widget widget) {
  if (XtIsShell(widget)) {
    // An unrealized shell would lose what the toolkit keeps for it.
    XtPopdown(widget);
  } else {
    XtUnrealizeWidget(widget);
  }
  XFlush(XtDisplay(widget));
  Widget shell = carrierShell();
  if (shell == nullptr || !XtIsRealized(shell) || !hookShell(shell)) {
    XtDestroyWidget(widget);
    return;
  }
  pendingWidgets().insert(widget);
  XtAddCallback(widget, const_cast<char*>(XmNdestroyCallback), forgetPending, nullptr);
  XEvent message = {};
  message.xclient.type = ClientMessage;
  message.xclient.window = XtWindow(shell);
  message.xclient.message_type = destroyerAtom;
  message.xclient.format = 8;
  std::memcpy(message.xclient.data.b, &widget, kPointerBytes);
  XSendEvent(XtDisplay(shell), XtWindow(shell), True, NoEventMask, &message);
}
