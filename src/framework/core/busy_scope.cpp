#include "framework/core/busy_scope.h"

#include <bitset>

#include "framework/core/application.h"
#include "framework/core/frame.h"

#include <X11/cursorfont.h>
#include <X11/Intrinsic.h>
#include <X11/keysym.h>
#include <X11/XKBlib.h>

namespace {

constexpr std::chrono::milliseconds kBetweenLooks{50};

/// Codes of keys.
using KeySet = std::bitset<256>;

// The shell's pointer shows in all windows inside it, which have none of their own. Null while
// there is no window.
Widget pointerShell() {
  const zFrameWin* frame = zApp::instance()->mainWindow();
  return frame != nullptr && frame->shell() != nullptr && XtIsRealized(frame->shell())
             ? frame->shell()
             : nullptr;
}

Bool isExposure(Display* /*display*/, XEvent* event, XPointer /*none*/) noexcept {
  return event->type == Expose || event->type == GraphicsExpose || event->type == NoExpose;
}

KeySet escapeKeys(Display* display) {
  int first = 0;
  int last = 0;
  XDisplayKeycodes(display, &first, &last);
  KeySet keys;
  for (int code = first; code <= last; ++code) {
    keys.set(static_cast<std::size_t>(code),
             XkbKeycodeToKeysym(display, static_cast<KeyCode>(code), 0, 0) == XK_Escape);
  }
  return keys;
}

// By the key's code: in here nothing may be asked of the server.
Bool isPressOf(Display* /*display*/, XEvent* event, XPointer keys) noexcept {
  return event->type == KeyPress &&
         reinterpret_cast<const KeySet*>(keys)->test(event->xkey.keycode);
}

}  // namespace

zBusyScope::zBusyScope() : nextLook(Clock::now() + patience) {}

zBusyScope::~zBusyScope() {
  if (pointer && pointerShell() != nullptr) {
    XUndefineCursor(XtDisplay(pointerShell()), XtWindow(pointerShell()));
    XFlush(XtDisplay(pointerShell()));
  }
}

bool zBusyScope::mayGoOn() {
  const Clock::time_point now = Clock::now();
  if (now < nextLook) {
    return true;
  }
  nextLook = now + kBetweenLooks;
  if (!pointer) {
    showPointer();
  }
  repaint();
  return !takeEscape();
}

void zBusyScope::showPointer() {
  Display* display = zApp::instance()->display();
  pointer.emplace(display, static_cast<unsigned>(XC_watch));
  if (Widget shell = pointerShell()) {
    XDefineCursor(display, XtWindow(shell), pointer->xCursor());
  }
}

// Until the next look at most: painting may cause exposures itself.
void zBusyScope::repaint() const {
  XEvent event;
  while (Clock::now() < nextLook &&
         XCheckIfEvent(zApp::instance()->display(), &event, isExposure, nullptr) != False) {
    XtDispatchEvent(&event);
  }
}

bool zBusyScope::takeEscape() {
  Display* display = zApp::instance()->display();
  KeySet keys = escapeKeys(display);
  XEvent event;
  return XCheckIfEvent(display, &event, isPressOf, reinterpret_cast<XPointer>(&keys)) != False;
}
