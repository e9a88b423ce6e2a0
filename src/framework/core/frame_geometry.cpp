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

void zFrameWin::getExterior(zRect& rect) {
  XWindowAttributes attributes;
  if (isRealized()) {
    Display* display = XtDisplay(mainWidget);
    const Window outermost = outermostWindow(display, XtWindow(mainWidget));
    if (outermost != None && XGetWindowAttributes(display, outermost, &attributes) != 0) {
      rect = zRect(zPoint{attributes.x, attributes.y},
                   zDimension{attributes.width, attributes.height});
      return;
    }
  }
  const ziScreen& screen = theScreen();
  const zDimension size = sizer()->size();
  const zPoint pos = {std::max(0, std::min(sizer()->pos().x, screen.screenWidth - size.width)),
                      std::max(0, std::min(sizer()->pos().y, screen.screenHeight - size.height))};
  rect = zRect(pos, size);
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

void zFrameWin::setIconicHint() {
  Display* display = XtDisplay(shellWidget);
  XOwned<XWMHints> hints(XGetWMHints(display, XtWindow(shellWidget)));
  if (hints == nullptr) {
    hints.reset(XAllocWMHints());
  }
  hints->initial_state = IconicState;
  hints->flags |= StateHint;
  XSetWMHints(display, XtWindow(shellWidget), hints.get());
}

void zFrameWin::maximize() {
  const zDimension size = {theScreen().screenWidth, theScreen().screenHeight};
  sizer()->setPos({0, 0});
  sizer()->setSize(size);
  for (Widget part : {shellWidget, inner, mainWidget}) {
    XtVaSetValues(part, XmNx, 0, XmNy, 0, XmNwidth, size.width, XmNheight, size.height, nullptr);
  }
}

zDimension zFrameWin::decorationAllowance(const zRect& exterior) {
  zDimension client;
  if (shellWidget != nullptr && XtIsRealized(shellWidget)) {
    Dimension width = 0;
    Dimension height = 0;
    XtVaGetValues(shellWidget, XmNwidth, &width, XmNheight, &height, nullptr);
    client = {width, height};
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
    zRect now;
    getExterior(now);
    if (now.left != x || now.top != y) {
      apply(x * 2 - now.left, y * 2 - now.top, width - (x - now.left), height - (y - now.top));
    }
  }
  sizer()->setPos({x, y});
  sizer()->setSize({width, height});
}

void zFrameWin::lockMinSize() {
  zRect exterior;
  getExterior(exterior);
  setMinSize(exterior.size());
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
  XWindowAttributes attributes;
  if (XGetWindowAttributes(XtDisplay(mainWidget), XtWindow(mainWidget), &attributes) == 0) {
    return;
  }
  XEvent configure = {};
  configure.xconfigure.type = ConfigureNotify;
  configure.xconfigure.width = attributes.width;
  configure.xconfigure.height = attributes.height;
  zEvent event;
  event.xevent = &configure;
  sizeChildren(&event);
}
