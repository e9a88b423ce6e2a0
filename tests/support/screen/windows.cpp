#include "tests/support/screen/windows.h"

#include <algorithm>
#include <memory>
#include <span>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace screen {

namespace {

/// Root, the window manager's frames, clients: titles are not looked for deeper.
constexpr int kTitleDepth = 4;

struct XDeleter {
  void operator()(void* memory) const { XFree(memory); }
};

template <typename T>
using XPointer = std::unique_ptr<T, XDeleter>;

std::string titleOf(Display* display, Window window) {
  char* name = nullptr;
  if (XFetchName(display, window, &name) == 0) {
    return {};
  }
  const XPointer<char> owned(name);
  return name;
}

/// Searches from the top of the stack down.
Window findTitle(Display* display, Window parent, const std::string& title, int depth) {
  Window root = None;
  Window above = None;
  Window* children = nullptr;
  unsigned count = 0;
  if (depth == 0 || XQueryTree(display, parent, &root, &above, &children, &count) == 0) {
    return None;
  }
  const XPointer<Window> owned(children);
  const std::span<const Window> windows(children, count);
  for (std::size_t i = windows.size(); i-- > 0;) {
    if (titleOf(display, windows[i]) == title && isViewable(display, windows[i])) {
      return windows[i];
    }
    if (const Window found = findTitle(display, windows[i], title, depth - 1)) {
      return found;
    }
  }
  return None;
}

Window parentOf(Display* display, Window window) {
  Window root = None;
  Window parent = None;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, window, &root, &parent, &children, &count) == 0) {
    return None;
  }
  const XPointer<Window> owned(children);
  return parent;
}

}  // namespace

ScreenArea areaOf(Display* display, Window window) {
  XWindowAttributes attributes = {};
  Window child = None;
  ScreenArea area;
  if (XGetWindowAttributes(display, window, &attributes) != 0) {
    XTranslateCoordinates(display, window, attributes.root, 0, 0, &area.x, &area.y, &child);
    area.width = attributes.width;
    area.height = attributes.height;
  }
  return area;
}

bool isViewable(Display* display, Window window) {
  XWindowAttributes attributes = {};
  return window != None && XGetWindowAttributes(display, window, &attributes) != 0 &&
         attributes.map_state == IsViewable;
}

Window windowWithTitle(Display* display, const std::string& title) {
  return findTitle(display, DefaultRootWindow(display), title, kTitleDepth);
}

bool hasPopup(Display* display) {
  constexpr int kSmallestExtent = 20;  // window managers keep tiny windows of their own
  Window root = None;
  Window above = None;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, DefaultRootWindow(display), &root, &above, &children, &count) == 0) {
    return false;
  }
  const XPointer<Window> owned(children);
  const std::span<const Window> windows(children, count);
  return std::any_of(windows.begin(), windows.end(), [display](Window window) {
    XWindowAttributes look = {};
    return XGetWindowAttributes(display, window, &look) != 0 && look.override_redirect != False &&
           look.map_state == IsViewable && look.height >= kSmallestExtent &&
           look.width >= kSmallestExtent && look.x >= 0 && look.y >= 0;
  });
}

Window inputFocus(Display* display) {
  Window focus = None;
  int revert = 0;
  XGetInputFocus(display, &focus, &revert);
  return focus;
}

bool hasInputFocus(Display* display, Window window) {
  Window at = inputFocus(display);
  while (at != None && at != PointerRoot && at != window) {
    at = parentOf(display, at);
  }
  return window != None && at == window;
}

void askToClose(Display* display, Window window) {
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(display, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(display, "WM_DELETE_WINDOW", False));
  event.xclient.data.l[1] = CurrentTime;
  XSendEvent(display, window, False, NoEventMask, &event);
}

}  // namespace screen
