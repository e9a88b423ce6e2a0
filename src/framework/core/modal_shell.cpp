#include "framework/core/modal_shell.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/desktop_properties.h"
#include "framework/core/frame.h"

#include <Xm/XmAll.h>

/// The events of the shells.
class ziModalShellEvents {
 public:
  static void focusProc(Widget shell, XtPointer modal, XEvent* event, Boolean* toWidget) noexcept;
  static void destroyed(Widget shell, XtPointer modal, XtPointer data) noexcept;
};

namespace {

std::vector<ziModalShell*> shellsUp;  ///< the newest last

Widget mainShell() {
  const zFrameWin* frame = zApp::instance()->mainWindow();
  return frame == nullptr ? nullptr : frame->shell();
}

// By the window manager's rules a client leaves the state of an icon by mapping its window.
bool bringBack(Widget shell) {
  if (shell == nullptr || !isIconic(shell)) {
    return false;
  }
  XMapWindow(XtDisplay(shell), XtWindow(shell));
  return true;
}

}  // namespace

void ziModalShellEvents::focusProc(Widget /*shell*/, XtPointer modal, XEvent* event,
                                   Boolean* /*toWidget*/) noexcept {
  auto& self = *static_cast<ziModalShell*>(modal);
  if (event->type == FocusIn && std::exchange(self.isCalling, false) && mainShell() != nullptr) {
    demandAttention(mainShell(), false);
  }
}

void ziModalShellEvents::destroyed(Widget /*shell*/, XtPointer modal, XtPointer /*data*/) noexcept {
  static_cast<ziModalShell*>(modal)->down();
}

void ziModalShell::up(Widget newShell) {
  down();
  shell = newShell;
  shellsUp.push_back(this);
  XtAddEventHandler(shell, FocusChangeMask, False, ziModalShellEvents::focusProc, this);
  XtAddCallback(shell, XmNdestroyCallback, ziModalShellEvents::destroyed, this);
  if (zUnaskedScope::isActive()) {
    keyGuard.start(shell);
    callUser();
  }
}

void ziModalShell::callUser() {
  if (bringBack(mainShell())) {
    isCalling = true;
    demandAttention(mainShell(), true);
  }
}

void ziModalShell::down() {
  if (shell == nullptr) {
    return;
  }
  keyGuard.stop();
  if (std::exchange(isCalling, false) && mainShell() != nullptr) {
    demandAttention(mainShell(), false);
  }
  XtRemoveEventHandler(shell, FocusChangeMask, False, ziModalShellEvents::focusProc, this);
  XtRemoveCallback(shell, XmNdestroyCallback, ziModalShellEvents::destroyed, this);
  std::erase(shellsUp, this);
  shell = nullptr;
}

void ziModalShell::raise() const {
  if (shell == nullptr || !XtIsRealized(shell)) {
    return;
  }
  bringBack(mainShell());
  Display* display = XtDisplay(shell);
  XMapRaised(display, XtWindow(shell));
  XWindowAttributes attributes;
  if (XGetWindowAttributes(display, XtWindow(shell), &attributes) != 0 &&
      attributes.map_state == IsViewable) {
    XSetInputFocus(display, XtWindow(shell), RevertToParent, XtLastTimestampProcessed(display));
  }
}

void ziModalShell::raiseNewest() {
  if (!shellsUp.empty()) {
    shellsUp.back()->raise();
  }
}
