#include "tests/e2e/app/user.h"

#include <algorithm>
#include <memory>
#include <span>
#include <stdexcept>
#include <thread>
#include <tuple>
#include <vector>

#include "tests/support/script_failure.h"

#include <X11/extensions/XTest.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace {

constexpr Milliseconds kPause{5};
constexpr int kClicksForAll = 4;        // one places the caret, then word, line, all
constexpr Milliseconds kClickTime{15};  // a text area takes clicks without any time for one
constexpr long kLargestSelection = 1L << 20;

// Windows may go while they are looked at.
int ignoreXErrors(Display* /*display*/, XErrorEvent* /*event*/) {
  return 0;
}

void collectLeaves(Display* display, Window window, std::vector<Window>& leaves) {
  Window root = None;
  Window parent = None;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, window, &root, &parent, &children, &count) == 0) {
    return;
  }
  for (const Window child : std::span<const Window>(children, count)) {
    collectLeaves(display, child, leaves);
  }
  if (count == 0 && screen::isViewable(display, window)) {
    leaves.push_back(window);
  }
  if (children != nullptr) {
    XFree(children);
  }
}

/// Innermost windows that lie inside `window` in full, the largest first.
std::vector<Window> leavesOf(Display* display, Window window) {
  std::vector<Window> leaves;
  collectLeaves(display, window, leaves);
  const screen::ScreenArea whole = screen::areaOf(display, window);
  std::erase_if(leaves, [&](Window leaf) {
    const screen::ScreenArea area = screen::areaOf(display, leaf);
    return area.x + area.width > whole.x + whole.width ||
           area.y + area.height > whole.y + whole.height;
  });
  const auto size = [display](Window leaf) {
    const screen::ScreenArea area = screen::areaOf(display, leaf);
    return area.width * area.height;
  };
  std::sort(leaves.begin(), leaves.end(), [&](Window a, Window b) { return size(a) > size(b); });
  return leaves;
}

bool hasProperty(Display* display, Window window, const char* name) {
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, 0, False,
                     AnyPropertyType, &type, &format, &count, &left, &data);
  if (data != nullptr) {
    XFree(data);
  }
  return type != None;
}

}  // namespace

User::User(const std::string& displayName)
    : display(XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str())) {
  if (display == nullptr) {
    throw std::runtime_error("no display");
  }
  XSetErrorHandler(ignoreXErrors);
  const Window root = DefaultRootWindow(display);
  hasWindowManager = hasProperty(display, root, "_MOTIF_WM_INFO") ||
                     hasProperty(display, root, "_NET_SUPPORTING_WM_CHECK");
}

User::~User() {
  XCloseDisplay(display);
}

void User::waitFor(const std::function<bool()>& condition, const std::function<std::string()>& what,
                   SourceLine where) const {
  const Deadline deadline(kAnswerTime);
  while (!condition()) {
    if (deadline.hasPassed()) {
      failScript("the user waited in vain for " + what(), where);
    }
    std::this_thread::sleep_for(kPause);
  }
}

Window User::windowWithTitle(const std::string& title) const {
  return screen::windowWithTitle(display, title);
}

Window User::awaitWindow(const std::string& title, Window known, SourceLine where) {
  Window window = None;
  const auto isReady = [&] {
    window = windowWithTitle(title);
    if (window == None || window == known) {
      return false;
    }
    if (!hasWindowManager) {
      XSetInputFocus(display, window, RevertToPointerRoot, CurrentTime);
    }
    return screen::hasInputFocus(display, window);
  };
  waitFor(
      isReady, [&] { return "a window \"" + title + "\" with the focus"; }, where);
  return window;
}

void User::awaitGone(Window window, SourceLine where) {
  waitFor([&] { return !screen::isViewable(display, window); }, [] { return "a window to go"; },
          where);
}

void User::awaitMenu(SourceLine where) {
  waitFor([&] { return screen::hasPopup(display); }, [] { return "a menu"; }, where);
}

void User::awaitNoMenu(SourceLine where) {
  waitFor([&] { return !screen::hasPopup(display); }, [] { return "the menu to go"; }, where);
}

bool User::seesMenu(Milliseconds time) const {
  const Deadline deadline(time);
  while (!screen::hasPopup(display) && !deadline.hasPassed()) {
    std::this_thread::sleep_for(kPause);
  }
  return screen::hasPopup(display);
}

void User::type(std::string_view text) {
  for (const char character : text) {
    press(screen::symbolOf(character));
  }
}

void User::press(screen::KeySymbol symbol, unsigned modifiers) {
  if (!screen::hasKey(display, symbol)) {
    screen::assignSpareKey(display, symbol);
    const auto hasLearnt = [&] {
      XSync(display, False);
      while (XPending(display) > 0) {
        XEvent event;
        XNextEvent(display, &event);
        if (event.type == MappingNotify) {
          XRefreshKeyboardMapping(&event.xmapping);
        }
      }
      return screen::hasKey(display, symbol);
    };
    waitFor(
        hasLearnt, [] { return "a key with a new symbol"; }, SourceLine::current());
  }
  screen::fakeKey(display, symbol, modifiers);
  XSync(display, False);
}

void User::close(Window window) {
  screen::askToClose(display, window);
  XSync(display, False);
}

void User::iconify(Window window) {
  XIconifyWindow(display, window, DefaultScreen(display));
  awaitGone(window);
}

void User::resize(Window window, int width, int height) {
  XResizeWindow(display, window, static_cast<unsigned>(width), static_cast<unsigned>(height));
  const auto isSized = [&] {
    const screen::ScreenArea area = screen::areaOf(display, window);
    return area.width == width && area.height == height;
  };
  waitFor(
      isSized, [] { return "a new size"; }, SourceLine::current());
}

void User::clickAt(int x, int y) {
  XTestFakeMotionEvent(display, -1, x, y, CurrentTime);
  XTestFakeButtonEvent(display, Button1, True, CurrentTime);
  XTestFakeButtonEvent(display, Button1, False, CurrentTime);
  XSync(display, False);
}

void User::click(const screen::ScreenArea& place) {
  clickAt(place.x + place.width / 2, place.y + place.height / 2);
}

void User::clickLeft(const screen::ScreenArea& place) {
  constexpr int kInside = 4;
  clickAt(place.x + kInside, place.y + place.height / 2);
}

std::vector<screen::ScreenArea> User::fields(Window window) const {
  std::vector<screen::ScreenArea> places;
  for (const Window leaf : leavesOf(display, window)) {
    places.push_back(screen::areaOf(display, leaf));
  }
  std::sort(places.begin(), places.end(),
            [](const auto& a, const auto& b) { return std::tie(a.y, a.x) < std::tie(b.y, b.x); });
  return places;
}

void User::clickAllOf(Window area) {
  const screen::ScreenArea place = screen::areaOf(display, area);
  // What came before must not count as the first of these clicks.
  constexpr Milliseconds kMultiClickTime{250};
  std::this_thread::sleep_for(kMultiClickTime);
  XTestFakeMotionEvent(display, -1, place.x + place.width / 2, place.y + place.height / 2,
                       CurrentTime);
  for (int click = 0; click < kClicksForAll; ++click) {
    XTestFakeButtonEvent(display, Button1, True, CurrentTime);
    XTestFakeButtonEvent(display, Button1, False, CurrentTime);
    XSync(display, False);
    std::this_thread::sleep_for(kClickTime);
  }
}

bool User::select(Window window) {
  const std::vector<Window> candidates =
      textArea != None ? std::vector<Window>{textArea} : leavesOf(display, window);
  for (const Window area : candidates) {
    XSetSelectionOwner(display, XA_PRIMARY, None, CurrentTime);
    clickAllOf(area);
    const Deadline deadline(Milliseconds{1000});
    while (!deadline.hasPassed()) {
      if (XGetSelectionOwner(display, XA_PRIMARY) != None) {
        textArea = area;
        return true;
      }
      std::this_thread::sleep_for(kPause);
    }
  }
  return false;
}

std::string User::selection() {
  const Window window =
      XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
  XConvertSelection(display, XA_PRIMARY, XA_STRING, XA_STRING, window, CurrentTime);
  const auto hasAnswer = [&] {
    XEvent event;
    return XCheckTypedWindowEvent(display, window, SelectionNotify, &event) != False;
  };
  XSync(display, False);
  waitFor(
      hasAnswer, [] { return "the selected text"; }, SourceLine::current());
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display, window, XA_STRING, 0, kLargestSelection, False, XA_STRING, &type,
                     &format, &count, &left, &data);
  std::string text;
  if (data != nullptr) {
    text.assign(reinterpret_cast<const char*>(data), count);
    XFree(data);
  }
  XDestroyWindow(display, window);
  return text;
}

void User::expectText(Window window, const std::string& text, SourceLine where) {
  std::string seen;
  const auto isThere = [&] {
    seen = select(window) ? selection() : "";
    if (seen.empty()) {
      textArea = None;  // the clicks went elsewhere, while a box kept them off for example
    }
    return seen == text;
  };
  waitFor(
      isThere, [&] { return "the text \"" + text + "\"\nseen was \"" + seen + "\""; }, where);
}
