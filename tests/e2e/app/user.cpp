#include "tests/e2e/app/user.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>

#include "tests/support/child_process.h"

#include <X11/Xatom.h>
#include <X11/Xlib.h>

namespace {

constexpr int kClicksForAll = 4;        // one places the caret, then word, line, all
constexpr unsigned kClickTime = 15000;  // a text area takes clicks without any time for one
constexpr long kLargestSelection = 1L << 20;

// Windows may go before what is asked of them.
int ignoreXErrors(Display* /*display*/, XErrorEvent* /*event*/) {
  return 0;
}

}  // namespace

User::User(const std::string& displayName)
    : screen::User(XOpenDisplay(displayName.empty() ? nullptr : displayName.c_str())) {
  if (display() == nullptr) {
    throw std::runtime_error("no display");
  }
  XSetErrorHandler(ignoreXErrors);
}

User::~User() {
  XCloseDisplay(display());
}

void User::giveFocus(const std::string& title) {
  waitFor([&] { return windowWithTitle(title) != None; }, "a window \"" + title + "\"");
  XSetInputFocus(display(), windowWithTitle(title), RevertToPointerRoot, CurrentTime);
  awaitWindow(title);
}

void User::iconify(Window window) {
  XIconifyWindow(display(), window, DefaultScreen(display()));
  awaitGone(window);
}

void User::resize(Window window, int width, int height) {
  XResizeWindow(display(), window, static_cast<unsigned>(width), static_cast<unsigned>(height));
  waitFor([&] { return areaOf(window).width == width && areaOf(window).height == height; },
          "a new size");
}

void User::click(const screen::ScreenArea& place) {
  moveTo(place.x + place.width / 2, place.y + place.height / 2);
  button(screen::kLeftButton, true);
  button(screen::kLeftButton, false);
}

void User::clickLeft(const screen::ScreenArea& place) {
  constexpr int kEdge = 8;
  click({place.x, place.y, kEdge, place.height});
}

std::vector<screen::ScreenArea> User::fields(Window window) const {
  std::vector<screen::ScreenArea> places;
  const screen::ScreenArea whole = areaOf(window);
  for (const Window leaf : innermost(window)) {
    const screen::ScreenArea area = areaOf(leaf);
    if (area.x + area.width <= whole.x + whole.width &&
        area.y + area.height <= whole.y + whole.height) {
      places.push_back(area);
    }
  }
  std::ranges::sort(places, {}, [](const auto& place) { return std::tie(place.y, place.x); });
  return places;
}

std::string User::selectAll(Window area) {
  XSetSelectionOwner(display(), XA_PRIMARY, None, CurrentTime);
  // What came before must not count as the first of these clicks.
  constexpr unsigned kMultiClickTime = 250000;
  ::usleep(kMultiClickTime);
  for (int clicks = 0; clicks < kClicksForAll; ++clicks) {
    click(areaOf(area));
    ::usleep(kClickTime);
  }
  const Deadline deadline(Milliseconds{1000});
  while (XGetSelectionOwner(display(), XA_PRIMARY) == None) {
    if (deadline.hasPassed()) {
      return "";  // the clicks went elsewhere, while a box kept them off for example
    }
    pause();
  }
  const Window holder =
      XCreateSimpleWindow(display(), DefaultRootWindow(display()), 0, 0, 1, 1, 0, 0, 0);
  XConvertSelection(display(), XA_PRIMARY, XA_STRING, XA_STRING, holder, CurrentTime);
  const auto hasAnswer = [&] {
    XEvent event;
    return XCheckTypedWindowEvent(display(), holder, SelectionNotify, &event) != False;
  };
  waitFor(hasAnswer, "the selected text");
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display(), holder, XA_STRING, 0, kLargestSelection, False, XA_STRING, &type,
                     &format, &count, &left, &data);
  std::string text = data != nullptr ? std::string(data, data + count) : "";
  XFree(data);
  XDestroyWindow(display(), holder);
  return text;
}

void User::expectText(Window window, const std::string& text, SourceLine where) {
  const auto size = [this](Window area) { return areaOf(area).width * areaOf(area).height; };
  std::string seen;
  for (const Deadline deadline(kAnswerTime); !deadline.hasPassed();) {
    seen = textArea != None ? selectAll(textArea) : "";
    if (seen.empty()) {
      // The largest one that takes a selection.
      std::vector<Window> areas = innermost(window);
      std::ranges::sort(areas, std::ranges::greater(), size);
      const auto takesIt = [&](Window area) { return !(seen = selectAll(area)).empty(); };
      const auto found = std::ranges::find_if(areas, takesIt);
      textArea = found != areas.end() ? *found : None;
    }
    if (seen == text) {
      return;
    }
  }
  failScript("awaited was the text \"" + text + "\"\nseen is \"" + seen + "\"", where);
}
