// A frame on the screen: showing, its outer rectangle with the window manager's decoration, and
// moving by that rectangle.

#include <algorithm>
#include <memory>

#include "framework/core/desktop_properties.h"
#include "framework/core/frame.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/x_settings.h"
#include "framework/draw/screen.h"

namespace {

struct XFreeDeleter {
  void operator()(void* data) const { XFree(data); }
};
template <class T>
using XOwned = std::unique_ptr<T, XFreeDeleter>;

// The window just below the root: the client itself or the window manager's outermost frame.
Window outermostWindow(Display* display, Window window) {
  for (;;) {
    Window root = None;
    Window parent = None;
    Window* children = nullptr;
    unsigned count = 0;
    if (XQueryTree(display, window, &root, &parent, &children, &count) == 0) {
      return None;
    }
    const XOwned<Window> release(children);
    if (parent == root || parent == None) {
      return window;
    }
    window = parent;
  }
}

}  // namespace

// Asks the window manager's frame once; it stays the same while the client keeps its size.
const ziDecoration& zFrameWin::decoration(const zDimension& client) {
  if (ownDecoration && ownDecoration->around == client) {
    return *ownDecoration;
  }
  ownDecoration = ziDecoration{client, {}, {}};
  Display* display = XtDisplay(shellWidget);
  const Window window = XtWindow(shellWidget);
  const Window outermost = isDecorated ? outermostWindow(display, window) : None;
  XWindowAttributes attributes;
  int x = 0;
  int y = 0;
  Window child = None;
  if (outermost != None && outermost != window &&
      XGetWindowAttributes(display, outermost, &attributes) != 0 &&
      XTranslateCoordinates(display, window, outermost, 0, 0, &x, &y, &child) != 0) {
    ownDecoration->corner = {x + attributes.border_width, y + attributes.border_width};
    ownDecoration->added = {attributes.width - client.width, attributes.height - client.height};
  }
  return *ownDecoration;
}

void zFrameWin::reparented(bool hasFrame) {
  isDecorated = hasFrame;
  ownDecoration.reset();
}

void zFrameWin::getExterior(zRect& rect) {
  if (isRealized() && shellWidget != nullptr) {
    Position x = 0;
    Position y = 0;
    XtTranslateCoords(shellWidget, 0, 0, &x, &y);
    const zDimension client = widgetSize(shellWidget);
    const ziDecoration& frame = decoration(client);
    rect = zRect(zPoint{x - frame.corner.x, y - frame.corner.y},
                 zDimension{client.width + frame.added.width, client.height + frame.added.height});
    return;
  }
  const zDimension size = sizer()->size();
  rect = zRect(keptInside(sizer()->pos(), size, theScreen().size()), size);
}

void zFrameWin::setShowState(int state) {
  if (!isMainWindow() || shellWidget == nullptr || !XtIsRealized(shellWidget)) {
    return;
  }
  switch (state) {
    case kShowHide:
      XUnmapWindow(XtDisplay(shellWidget), XtWindow(shellWidget));
      break;
    case kShowMinimized:
    case kShowMinimize:
    case kShowMinNoActive:
      setIconicHint();
      break;
    case kShowMaximized:
      maximize();
      break;
    default:
      XMapWindow(XtDisplay(shellWidget), XtWindow(shellWidget));
  }
}

zDimension zFrameWin::decorationAllowance(const zRect& exterior) {
  zDimension client;
  if (shellWidget != nullptr && XtIsRealized(shellWidget)) {
    client = widgetSize(shellWidget);
  } else {
    zRect interior;
    getInterior(interior);
    client = interior.size();
  }
  return {exterior.width() - client.width, exterior.height() - client.height};
}

void zFrameWin::applyGeometry(int x, int y, int width, int height) {
  if (shellWidget == nullptr) {
    return;
  }
  XtVaSetValues(shellWidget, XmNx, x, XmNy, y, XmNwidth, width, XmNheight, height, nullptr);
  if (XtIsRealized(shellWidget)) {
    XMoveResizeWindow(XtDisplay(shellWidget), XtWindow(shellWidget), x, y,
                      static_cast<unsigned>(width), static_cast<unsigned>(height));
    return;
  }
  geometry = "=" + std::to_string(width) + "x" + std::to_string(height);
  for (const int offset : {x, y}) {
    geometry += "+" + std::to_string(offset);
  }
  XtVaSetValues(shellWidget, XmNgeometry, geometry.c_str(), nullptr);
}

void zFrameWin::moveResize(int x, int y, int width, int height) {
  const auto apply = [this](int left, int top, int outerWidth, int outerHeight) {
    zRect exterior;
    getExterior(exterior);
    const zDimension allowance = decorationAllowance(exterior);
    applyGeometry(left, top, std::max(outerWidth - allowance.width, 1),
                  std::max(outerHeight - allowance.height, 1));
  };
  apply(x, y, width, height);
  if (g_XSettings.positionIsFrameWorkaround && isRealized() && XtIsRealized(shellWidget)) {
    // The toolkit tells the place of before until the window manager's answer has come round.
    Window child = None;
    zPoint now;
    XTranslateCoordinates(XtDisplay(shellWidget), XtWindow(shellWidget),
                          RootWindowOfScreen(XtScreen(shellWidget)), 0, 0, &now.x, &now.y, &child);
    const zPoint corner = decoration(widgetSize(shellWidget)).corner;
    now = {now.x - corner.x, now.y - corner.y};
    if (now != zPoint{x, y}) {
      apply(x * 2 - now.x, y * 2 - now.y, width - (x - now.x), height - (y - now.y));
    }
  }
  sizer()->setPos({x, y});
  sizer()->setSize({width, height});
}

void zFrameWin::setMinSize(const zDimension& size) {
  smallest = size;
  if (shellWidget != nullptr) {
    // Without a base size of their own, sizes that the user types would count from the minimum.
    XtVaSetValues(shellWidget, XmNminWidth, smallest.width, XmNminHeight, smallest.height,
                  XmNbaseWidth, 0, XmNbaseHeight, 0, nullptr);
  }
}

void zAppFrame::show(int state) {
  if (hasState(kShown)) {
    setShowState(state);
    return;
  }
  zWindow::show(state);
  if (state == kShowMaximized) {
    maximize();
  }
  // Desktops look at the properties when the window is mapped.
  XtSetMappedWhenManaged(shellWidget, False);
  XtRealizeWidget(shellWidget);
  announceWindow(shellWidget, ziWindowType::normal, text.c_str());
  publishIcon();
  if (state == kShowMinimized || state == kShowMinimize || state == kShowMinNoActive) {
    setIconicHint();
  }
  XtSetMappedWhenManaged(shellWidget, True);
  XtMapWidget(shellWidget);
  layOutFirst();
}

void zAppFrame::layOutFirst() {
  XEvent configure = configureOf(mainWidget);
  zEvent event;
  event.xevent = &configure;
  sizeChildren(&event);
}
