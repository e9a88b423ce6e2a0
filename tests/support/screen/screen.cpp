#include "tests/support/screen/screen.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace screen {

namespace {

/// While one lives, windows may go while they are looked at.
class Looking {
 public:
  explicit Looking(Display* connection) : display(connection) {
    XSync(display, False);
    previous = XSetErrorHandler([](Display* /*display*/, XErrorEvent* /*event*/) { return 0; });
  }
  Looking(const Looking&) = delete;
  Looking& operator=(const Looking&) = delete;
  ~Looking() {
    XSync(display, False);
    XSetErrorHandler(previous);
  }

 private:
  Display* display;
  XErrorHandler previous;
};

struct Family {
  Window parent = None;
  std::vector<Window> children;  ///< from the bottom of the stack up
};

Family familyOf(Display* display, Window window) {
  Family family;
  Window root = None;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display, window, &root, &family.parent, &children, &count) != 0) {
    family.children.assign(children, children + count);
    XFree(children);
  }
  return family;
}

XWindowAttributes attributesOf(Display* display, Window window) {
  XWindowAttributes attributes = {};
  if (window == None || XGetWindowAttributes(display, window, &attributes) == 0) {
    attributes.map_state = IsUnmapped;
  }
  return attributes;
}

bool isShown(Display* display, Window window) {
  return attributesOf(display, window).map_state == IsViewable;
}

std::string titleOf(Display* display, Window window) {
  char* name = nullptr;
  std::string title = XFetchName(display, window, &name) != 0 ? name : "";
  XFree(name);
  return title;
}

/// The 32-bit numbers of a property; none without it.
std::vector<long> numbersOf(Display* display, Window window, const char* name) {
  constexpr long kMost = 1024;
  Atom type = None;
  int format = 0;
  unsigned long count = 0;
  unsigned long left = 0;
  unsigned char* data = nullptr;
  XGetWindowProperty(display, window, XInternAtom(display, name, False), 0, kMost, False,
                     AnyPropertyType, &type, &format, &count, &left, &data);
  const auto* const numbers = reinterpret_cast<const long*>(data);
  std::vector<long> found(numbers, numbers + (format == 32 ? count : 0));
  XFree(data);
  return found;
}

/// Searches from the top of the stack down. Titles are on the root's children, on those of the
/// window manager's frames and of frames within frames.
Window findTitle(Display* display, Window parent, const std::string& title, int depth = 4) {
  Window found = None;
  std::vector<Window> children = familyOf(display, parent).children;
  for (; depth != 0 && found == None && !children.empty(); children.pop_back()) {
    const Window child = children.back();
    const bool isIt = titleOf(display, child) == title && isShown(display, child);
    found = isIt ? child : findTitle(display, child, title, depth - 1);
  }
  return found;
}

}  // namespace

ScreenArea Screen::areaOf(Window window) const {
  const Looking looking(connection);
  const XWindowAttributes attributes = attributesOf(connection, window);
  ScreenArea area{0, 0, attributes.width, attributes.height};
  Window child = None;
  XTranslateCoordinates(connection, window, attributes.root, 0, 0, &area.x, &area.y, &child);
  return area;
}

bool Screen::isViewable(Window window) const {
  const Looking looking(connection);
  return isShown(connection, window);
}

Window Screen::windowWithTitle(const std::string& title) const {
  const Looking looking(connection);
  return findTitle(connection, DefaultRootWindow(connection), title);
}

bool Screen::hasPopup() const {
  constexpr int kSmallestExtent = 20;  // window managers keep tiny windows of their own
  const Looking looking(connection);
  const auto all = familyOf(connection, DefaultRootWindow(connection)).children;
  return std::any_of(all.begin(), all.end(), [this](Window window) {
    const XWindowAttributes look = attributesOf(connection, window);
    return look.override_redirect != False && look.map_state == IsViewable &&
           std::min(look.height, look.width) >= kSmallestExtent && look.x >= 0;
  });
}

Window Screen::inputFocus() const {
  Window focus = None;
  int revert = 0;
  XGetInputFocus(connection, &focus, &revert);
  return focus;
}

bool Screen::hasInputFocus(Window window) const {
  const Looking looking(connection);
  Window at = inputFocus();
  while (at != None && at != PointerRoot && at != window) {
    at = familyOf(connection, at).parent;
  }
  return window != None && at == window;
}

void Screen::press(KeySymbol symbol, unsigned modifiers) {
  KeyCode key = XKeysymToKeycode(connection, symbol);
  if (key == 0) {
    constexpr int kLastKey = 255;
    XChangeKeyboardMapping(connection, kLastKey - newSymbols++, 1, &symbol, 1);
    for (; key == 0; key = XKeysymToKeycode(connection, symbol)) {
      settle();
    }
  }
  // A shifted symbol stands behind the plain one.
  const bool isPlain = XkbKeycodeToKeysym(connection, key, 0, 0) == symbol;
  const unsigned held = modifiers | (isPlain ? kNoModifier : kShift);
  const auto fakeModifiers = [&](Bool areDown) {
    for (const auto& [bit, modifier] :
         {std::pair{kShift, XK_Shift_L}, {kControl, XK_Control_L}, {kAlt, XK_Alt_L}}) {
      if ((held & bit) != 0) {
        XTestFakeKeyEvent(connection, XKeysymToKeycode(connection, modifier), areDown, CurrentTime);
      }
    }
  };
  // The key goes up before its modifiers do: menus look at them on its release.
  fakeModifiers(True);
  XTestFakeKeyEvent(connection, key, True, CurrentTime);
  XTestFakeKeyEvent(connection, key, False, CurrentTime);
  fakeModifiers(False);
  settle();
}

void Screen::type(std::string_view text) {
  for (const char c : text) {
    // The symbols of Latin-1 have the numbers of its characters.
    press(c == '\n' ? XK_Return : c == '\t' ? XK_Tab : static_cast<unsigned char>(c));
  }
}

void Screen::moveTo(int x, int y) {
  XTestFakeMotionEvent(connection, -1, x, y, CurrentTime);
  settle();
}

void Screen::button(unsigned number, bool isDown) {
  XTestFakeButtonEvent(connection, number, isDown ? True : False, CurrentTime);
  settle();
}

void Screen::close(Window window) {
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = window;
  event.xclient.message_type = XInternAtom(connection, "WM_PROTOCOLS", False);
  event.xclient.format = 32;
  event.xclient.data.l[0] = static_cast<long>(XInternAtom(connection, "WM_DELETE_WINDOW", False));
  event.xclient.data.l[1] = CurrentTime;
  XSendEvent(connection, window, False, NoEventMask, &event);
  settle();
}

// What a window manager puts round a window it tells in a property, also of one that it has not
// seen.
Window Screen::askWindowManager() {
  const Atom request = XInternAtom(connection, "_NET_REQUEST_FRAME_EXTENTS", False);
  const Window root = DefaultRootWindow(connection);
  const std::vector<long> known = numbersOf(connection, root, "_NET_SUPPORTED");
  if (std::find(known.begin(), known.end(), static_cast<long>(request)) == known.end()) {
    return None;
  }
  const Window question = XCreateSimpleWindow(connection, root, 0, 0, 1, 1, 0, 0, 0);
  XEvent event = {};
  event.xclient.type = ClientMessage;
  event.xclient.window = question;
  event.xclient.message_type = request;
  event.xclient.format = 32;
  XSendEvent(connection, root, False, SubstructureRedirectMask | SubstructureNotifyMask, &event);
  settle();
  return question;
}

bool Screen::hasAnswered(Window question) {
  if (numbersOf(connection, question, "_NET_FRAME_EXTENTS").empty()) {
    return false;
  }
  XDestroyWindow(connection, question);
  return true;
}

void Screen::settle() {
  // The server sends input on its way after it has answered, and before it answers again.
  XSync(connection, False);
  XSync(connection, False);
  XEvent event;
  while (XCheckTypedEvent(connection, MappingNotify, &event) != False) {
    XRefreshKeyboardMapping(&event.xmapping);
  }
}

}  // namespace screen
