#include "framework/core/modal_shell.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "framework/core/application.h"
#include "framework/core/connect_xm.h"
#include "framework/core/desktop_properties.h"
#include "framework/core/frame.h"

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

void ziModalShell::focusChanged(XEvent& event) {
  if (event.type == FocusIn && std::exchange(isCalling, false) && mainShell() != nullptr) {
    demandAttention(mainShell(), false);
  }
}

void ziModalShell::up(Widget newShell) {
  down();
  shell = newShell;
  shellsUp.push_back(this);
  connect<&ziModalShell::focusChanged>(shell, zEventKinds{FocusChangeMask}, this);
  connect<&ziModalShell::down>(shell, callback::destroy, this);
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
  disconnect<&ziModalShell::focusChanged>(shell, zEventKinds{FocusChangeMask}, this);
  disconnect<&ziModalShell::down>(shell, callback::destroy, this);
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
