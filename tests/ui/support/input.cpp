// Input by the XTEST extension on the one connection: it is in the queue of events once the server
// has answered, so handling all events after each piece of input is enough. Only clicks may come
// later: into a window without the focus they go through the window manager first.

#include "tests/ui/support/input.h"

#include <cstdlib>
#include <thread>

#include "tests/ui/support/test_application.h"
#include "tests/ui/support/wait.h"
#include "tests/ui/support/windows.h"

#include <X11/extensions/XTest.h>
#include <X11/Intrinsic.h>
#include <X11/Xlib.h>

namespace ui {

namespace {

constexpr unsigned kWheelUp = 4;
constexpr unsigned kWheelDown = 5;
constexpr Milliseconds kClickTime{200};
constexpr Milliseconds kPause{1};

void fakeButton(unsigned button, bool isDown) {
  XTestFakeButtonEvent(display(), button, isDown ? True : False, CurrentTime);
}

int releasesSeen = 0;
XtEventDispatchProc usualDispatcher = nullptr;

Boolean countRelease(XEvent* event) {
  ++releasesSeen;
  return usualDispatcher(event);
}

/// Counts the button releases that reach this process from now on.
void countReleases() {
  const XtEventDispatchProc previous = XtSetEventDispatcher(display(), ButtonRelease, countRelease);
  if (previous != countRelease) {
    usualDispatcher = previous;
  }
}

/// Clicks where the pointer is, and handles events until the release has come, or for a short
/// while: it may have hit a window of another program.
void fakeClick(unsigned button) {
  countReleases();
  const int before = releasesSeen;
  fakeButton(button, true);
  fakeButton(button, false);
  const Deadline deadline(kClickTime);
  for (drain(); releasesSeen == before && !deadline.hasPassed(); drain()) {
    std::this_thread::sleep_for(kPause);
  }
}

void moveOnScreen(int x, int y) {
  XTestFakeMotionEvent(display(), -1, x, y, CurrentTime);
  drain();
}

}  // namespace

void pressKey(KeySymbol symbol, unsigned modifiers) {
  if (!screen::hasKey(display(), symbol)) {
    screen::assignSpareKey(display(), symbol);
    waitFor([&] { return screen::hasKey(display(), symbol); }, "a key with a new symbol");
  }
  screen::fakeKey(display(), symbol, modifiers);
  drain();
}

void typeText(std::string_view text) {
  for (const char character : text) {
    pressKey(screen::symbolOf(character));
  }
}

void moveTo(Window window, int x, int y) {
  const ScreenArea area = areaOf(window);
  moveOnScreen(area.x + x, area.y + y);
}

void moveTo(Widget widget, int x, int y) {
  const ScreenArea area = areaOf(widget);
  moveOnScreen(area.x + x, area.y + y);
}

void pressButton(MouseButton button) {
  fakeButton(button, true);
  drain();
}

void releaseButton(MouseButton button) {
  fakeButton(button, false);
  drain();
}

void click(Window window, int x, int y, MouseButton button) {
  moveTo(window, x, y);
  fakeClick(button);
}

void click(Widget widget, int x, int y, MouseButton button) {
  moveTo(widget, x, y);
  fakeClick(button);
}

void click(Widget widget, MouseButton button) {
  const ScreenArea area = areaOf(widget);
  click(widget, area.width / 2, area.height / 2, button);
}

void doubleClick(Widget widget) {
  const ScreenArea area = areaOf(widget);
  moveTo(widget, area.width / 2, area.height / 2);
  fakeClick(kLeftButton);
  fakeClick(kLeftButton);
}

void wheel(Widget widget, int x, int y, int notches) {
  moveTo(widget, x, y);
  for (int turned = 0; turned < std::abs(notches); ++turned) {
    fakeClick(notches > 0 ? kWheelUp : kWheelDown);
  }
}

}  // namespace ui
