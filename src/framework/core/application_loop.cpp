// The application object's main loop, its end, and the accelerators.

#include "framework/core/application.h"

#include <poll.h>
#include <array>

#include "framework/core/event.h"
#include "framework/core/frame.h"
#include "framework/core/notify.h"
#include "framework/core/toolkit_xm.h"
#include "framework/draw/res_id.h"
#include "resources/builtin_table.h"

#include <X11/Intrinsic.h>

namespace {

// The period of the shortest timer of the program.
constexpr std::chrono::milliseconds kEventBurst{10};

void ignoreTimeOut(XtPointer /*data*/, XtIntervalId* /*id*/) {}

const XKeyEvent* keyEventOf(const zEvent& event) {
  const bool isKey = event.xevent != nullptr &&
                     (event.xevent->type == KeyPress || event.xevent->type == KeyRelease);
  return isKey ? &event.xevent->xkey : nullptr;
}

// What the key would have given without Shift and Lock: both may be down beside the modifiers that
// an accelerator asks for, and must not change the key that it is compared with.
unsigned plainKeysym(const XKeyEvent& key) {
  XKeyEvent copy = key;
  return static_cast<unsigned>(XLookupKeysym(&copy, 0));
}

const zAccel* acceleratorOf(const zEvent& event, const std::vector<zAccel>& table) {
  const XKeyEvent* key = keyEventOf(event);
  const unsigned modifiers = key == nullptr ? 0 : key->state;
  const zAccel* found = findAccelerator(table, static_cast<unsigned>(event.wparam),
                                        static_cast<unsigned>(event.lparam), modifiers);
  if (found == nullptr && key != nullptr && key->display != nullptr &&
      (modifiers & (kStateShift | kStateLock)) != 0) {
    const unsigned plain = plainKeysym(*key);
    found = findAccelerator(table, plain, plain, modifiers);
  }
  return found;
}

}  // namespace

void zApp::setErrorHandlers() {
  XtAppSetWarningHandler(appContext, reportXtWarning);
  XtAppSetErrorHandler(appContext, reportXtError);
  XSetErrorHandler(XErrorReporter);
}

void zApp::go() {
  setErrorHandlers();
  while (running) {
    processEvent();
  }
}

// Xt serves due timers and inputs first: a timer whose handler takes longer than its period would
// keep keys, clicks and exposures waiting for good. So events come first here, and after a burst of
// them whatever is due gets its turn, so that a flood of events starves nothing either.
void zApp::processEvent() {
  const auto now = std::chrono::steady_clock::now();
  if (!hasPendingEvent()) {
    burstEnd.reset();
  } else if (!burstEnd) {
    burstEnd = now + kEventBurst;
  }
  if (burstEnd && now < *burstEnd) {
    XtAppProcessEvent(appContext, XtIMXEvent);
    return;
  }
  burstEnd.reset();
  XtAppProcessEvent(appContext, XtIMAll);
}

bool zApp::hasPendingEvent() const {
  return (XtAppPending(appContext) & XtIMXEvent) != 0;
}

void zApp::pumpPending(int descriptor, int milliseconds) {
  setErrorHandlers();
  while (running && XtAppPending(appContext) != 0) {
    processEvent();
  }
  std::array entries{pollfd{ConnectionNumber(xDisplay), POLLIN, 0}, pollfd{descriptor, POLLIN, 0}};
  if (running && poll(entries.data(), entries.size(), milliseconds) > 0 &&
      (entries[1].revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) {
    // Such a descriptor would wake every wait at once.
    poll(entries.data(), 1, milliseconds);
  }
}

void zApp::pumpWhile(const std::function<bool()>& condition) {
  while (running && condition()) {
    processEvent();
  }
}

void zApp::quit() {
  zEvent event = zEvent::of(kMsgClose);
  if (mainFrame != nullptr && zDispatchHandlers(event, mainFrame) != 0) {
    return;
  }
  if (mainFrame != nullptr && mainFrame->close(&event) != 0) {
    return;
  }
  stop();
}

void zApp::closeMainWindow() {
  zEvent event = zEvent::of(kMsgClose);
  if (mainFrame != nullptr && zDispatch(event, mainFrame) != 0) {
    return;
  }
  if (mainFrame != nullptr && mainFrame->close(&event) != 0) {
    return;
  }
  stop();
}

void zApp::stop() {
  running = false;
  wake();
}

void zApp::wake() {
  XtAppAddTimeOut(appContext, 0, ignoreTimeOut, nullptr);
}

int zApp::loadAccelerators(int resourceId) {
  accelerators.clear();
  const ziResource table(zResId(static_cast<std::uint32_t>(resourceId)), kResourceAccelerators);
  if (!table) {
    return 0;
  }
  accelerators = makeAccelerators(static_cast<const AcceleratorRow*>(table.data()));
  return 1;
}

int zApp::translateAccelerator(zEvent* event) {
  if (accelerators.empty() || modalDialogs > 0) {
    return 0;
  }
  const zAccel* accelerator = acceleratorOf(*event, accelerators);
  if (accelerator == nullptr) {
    return 0;
  }
  zEvent command = zEvent::of(kMsgCommand, accelerator->command);
  command.extra = kCommandFromAccelerator;
  ziFrameMenu* menu = mainFrame == nullptr ? nullptr : mainFrame->menu();
  if (menu != nullptr) {
    // The key of a greyed item is not left to the widget, where it might mean something else.
    if (menu->isItemEnabled(accelerator->command) == 0 || menu->dispatch(&command) != 0) {
      return 1;
    }
  }
  if (mainFrame != nullptr) {
    zDispatchHandlers(command, mainFrame);
  }
  return 1;
}

void zApp::beep() {
  XBell(xDisplay, 0);
}
