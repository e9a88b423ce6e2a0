// Frames: the widget tree of a top-level window. Geometry and show states are in
// frame_geometry.cpp.

#include "framework/core/frame.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "framework/core/application.h"
#include "framework/core/desktop_properties.h"
#include "framework/core/interfaces.h"
#include "framework/core/notify.h"
#include "framework/core/toolkit_xm.h"
#include "framework/core/window_events_xm.h"
#include "framework/core/x_settings.h"
#include "framework/draw/pictures.h"
#include "framework/draw/screen.h"

#include <X11/Xmu/Editres.h>
#include <Xm/MwmUtil.h>

namespace {

constexpr zEventKinds kShellEvents{StructureNotifyMask | FocusChangeMask};
constexpr int kDragInitiatorStyle = 6;
constexpr int kDragReceiverStyle = 5;
// Room for what the window manager draws round a window.
constexpr zDimension kDecoration = {16, 40};
constexpr int kPlainResolution = 96;

bool hasAll(std::uint32_t style, std::uint32_t bits) {
  return (style & bits) == bits;
}

int decorationsFor(std::uint32_t style) {
  int decorations = MWM_DECOR_BORDER;
  decorations |= hasAll(style, kStyleTitleBar) ? MWM_DECOR_TITLE : 0;
  decorations |= hasAll(style, kStyleSystemMenu) ? MWM_DECOR_MENU : 0;
  decorations |= hasAll(style, kStyleMinimizeBox) ? MWM_DECOR_MINIMIZE : 0;
  decorations |= hasAll(style, kStyleMaximizeBox) ? MWM_DECOR_MAXIMIZE : 0;
  decorations |= hasAll(style, kStyleResizeFrame) ? MWM_DECOR_RESIZEH : 0;
  return decorations;
}

int functionsFor(std::uint32_t style) {
  int functions = MWM_FUNC_MOVE | MWM_FUNC_CLOSE;
  functions |= hasAll(style, kStyleMinimizeBox) ? MWM_FUNC_MINIMIZE : 0;
  functions |= hasAll(style, kStyleMaximizeBox) ? MWM_FUNC_MAXIMIZE : 0;
  functions |= hasAll(style, kStyleResizeFrame) ? MWM_FUNC_RESIZE : 0;
  return functions;
}

// The size that a frame starts with when nobody gave one.
zDimension startSize(const ziScreen& screen) {
  const zDimension wanted = g_XSettings.startSize;
  if (wanted.width <= 0 || wanted.height <= 0) {
    return {screen.screenWidth / 2, screen.screenHeight / 3};
  }
  // Letters grow with the resolution of a dense screen, so the window does.
  const auto grown = [](int length, int dotsPerInch, int room) {
    const std::int64_t dots = std::max(dotsPerInch, kPlainResolution);
    return static_cast<int>(std::min<std::int64_t>(length * dots / kPlainResolution, room));
  };
  return {grown(wanted.width, screen.dotsPerInchX, screen.screenWidth - kDecoration.width),
          grown(wanted.height, screen.dotsPerInchY, screen.screenHeight - kDecoration.height)};
}

// Somewhere in the upper left quarter, but all of it on the screen.
zPoint startPlace(const ziScreen& screen, const zDimension& size) {
  const auto random = [](int edge) { return std::rand() % std::max(edge / 2, 1); };
  const int x = random(screen.screenWidth);
  const int y = random(screen.screenHeight);
  return keptInside({x, y}, {size.width + kDecoration.width, size.height + kDecoration.height},
                    screen.size());
}

void windowManagerCloses(zAppFrame& /*frame*/) {
  zApp::instance()->closeMainWindow();
}

}  // namespace

void zFrameWin::zShellEventProc(XEvent& xevent) {
  const bool isFocus = xevent.type == FocusIn || xevent.type == FocusOut;
  // The list that is open may be what a grab is for: its scroll bar.
  if (isFocus && isGrabFocusEvent(xevent)) {
    return;
  }
  zEvent event;
  event.xevent = &xevent;
  event.window = this;
  switch (xevent.type) {
    case FocusOut:
      closeOpenDropDown();
      activation(event, false);
      break;
    case FocusIn:
      activation(event, true);
      break;
    case ConfigureNotify:
      closeOpenDropDown();
      move(&event);
      break;
    case ReparentNotify:
      reparented(xevent.xreparent.parent != RootWindowOfScreen(XtScreen(shellWidget)));
      break;
    default:
      break;
  }
}

void zFrameWin::activation(zEvent& event, bool isIn) {
  event.message = kMsgActivate;
  event.wparam = isIn ? 1 : 0;
  if (zDispatchHandlers(event, this) == 0) {
    activate(&event);
  }
}

zFrameWin::zFrameWin(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* title)
    : zWindow(parent, sizer, style) {
  markClass(kClassFrameWin);
  text = title;
  zApp* app = zApp::instance();
  if (app->mainWindow() == nullptr) {
    app->setMainWindow(this);
  }
}

zFrameWin::~zFrameWin() {
  zApp* app = zApp::instance();
  if (shellWidget != nullptr && !hasState(kWidgetGone)) {
    disconnect<&zWindow::zWindowEventProc>(mainWidget, kFrameEvents, this);
    disconnect<&zWindow::zWindowEventProc>(shellWidget, kFocusEvents, this);
    disconnect<&zFrameWin::zShellEventProc>(shellWidget, kShellEvents, this);
  }
  menuBar.reset();
  // Children go first: their widgets are destroyed by messages to a shell that is still there.
  while (zWindow* child = children().popFront()) {
    delete child;
  }
  if (shellWidget != nullptr && !hasState(kWidgetGone)) {
    setState(kWidgetGone, true);
    XtDestroyWidget(shellWidget);
    mainWidget = nullptr;
    inner = nullptr;
  }
  icon.reset();
  if (isMainWindow()) {
    app->setMainWindow(nullptr);
  }
  if (app->topShell() == shellWidget) {
    app->setTopShell(app->mainWindow() == nullptr ? nullptr : app->mainWindow()->shell());
  }
}

bool zFrameWin::isMainWindow() const {
  return zApp::instance()->mainWindow() == this;
}

void zFrameWin::setCaption(const RWCString& caption) {
  setCaption(caption.c_str());
}
void zFrameWin::setCaption(const char* caption) {
  text = caption;
  if (shellWidget != nullptr) {
    XtVaSetValues(shellWidget, XmNtitle, text.c_str(), XmNiconName, text.c_str(), nullptr);
    announceTitle(shellWidget, text.c_str());
  }
}

void zFrameWin::sizeChildren(zEvent* event) {
  zWindow::sizeChildren(event);
}

void zFrameWin::setMenu(std::unique_ptr<ziFrameMenu> menu) {
  if (menuBar == nullptr) {
    menuBar = std::move(menu);
  }
}

void zFrameWin::setIcon(std::unique_ptr<zIcon> newIcon) {
  // The old one goes when nobody is told to show it any more.
  const std::unique_ptr<zIcon> old = std::exchange(icon, std::move(newIcon));
  publishIcon();
}

void zFrameWin::setIcon(const zResId& resource) {
  setIcon(std::make_unique<zIcon>(resource));
}

void zFrameWin::publishIcon() {
  if (shellWidget == nullptr || hasState(kWidgetGone)) {
    return;
  }
  if (isMainWindow()) {
    XtVaSetValues(shellWidget, XmNiconPixmap, icon == nullptr ? None : icon->pixmap(), XmNiconMask,
                  icon == nullptr ? None : icon->mask(), nullptr);
  }
  announceIcon(shellWidget,
               icon == nullptr ? std::vector<unsigned long>() : icon->windowManagerPixels());
}

void zFrameWin::createWidgets() {
  createShell();
  createInterior();
  zApp* app = zApp::instance();
  app->takeDisplay(mainWidget);
  ziDrawCache::instance().makeFonts();
  readXSettings(app->display(), app->name());
  addEventHandlers();
  chooseStartGeometry();
  takeParentsFont();
}

void zFrameWin::createShell() {
  zApp* app = zApp::instance();
  shellWidget = XtVaAppCreateShell(
      nullptr, app->name().c_str(), applicationShellWidgetClass, app->display(), XmNtitle,
      text.c_str(), XmNiconName, text.c_str(), XmNdeleteResponse, XmDO_NOTHING, XmNuserData, this,
      XmNmwmDecorations, decorationsFor(style()), XmNmwmFunctions, functionsFor(style()), nullptr);
  app->setTopShell(shellWidget);
  computeShadowColours(shellWidget);
  XtVaSetValues(XmGetXmDisplay(app->display()), XmNdragInitiatorProtocolStyle, kDragInitiatorStyle,
                XmNdragReceiverProtocolStyle, kDragReceiverStyle, XmNenableUnselectableDrag, False,
                nullptr);
  XtAddEventHandler(shellWidget, NoEventMask, True, _XEditResCheckMessages, nullptr);
}

void zFrameWin::createInterior() {
  inner = XmCreateMainWindow(shellWidget, const_cast<char*>("MainWindow"), nullptr, 0);
  XtManageChild(inner);
  mainWidget = XmCreateBulletinBoard(inner, const_cast<char*>("BulletinBoard"), nullptr, 0);
  XtVaSetValues(mainWidget, XmNuserData, this, XmNresizePolicy, XmRESIZE_NONE, XmNmarginHeight, 0,
                XmNmarginWidth, 0, nullptr);
  applyBackground(*this);
  XtManageChild(mainWidget);
}

void zFrameWin::addEventHandlers() {
  connect<&zWindow::zWindowEventProc>(mainWidget, kFrameEvents, this);
  connect<&zWindow::zWindowEventProc>(shellWidget, kFocusEvents, this);
  connect<&zFrameWin::zShellEventProc>(shellWidget, kShellEvents, this);
}

void zFrameWin::chooseStartGeometry() {
  const ziScreen& screen = theScreen();
  zPoint pos = sizer()->pos();
  zDimension size = sizer()->size();
  if (size.width == kNotSet && size.height == kNotSet) {
    size = startSize(screen);
  }
  if (pos.x == kNotSet && pos.y == kNotSet) {
    pos = startPlace(screen, size);
  }
  sizer()->setPos(pos);
  sizer()->setSize(size);
  XtVaSetValues(shellWidget, XmNx, pos.x, XmNy, pos.y, XmNwidth, size.width, XmNheight, size.height,
                XmNborderWidth, 0, nullptr);
  for (Widget inside : {inner, mainWidget}) {
    XtVaSetValues(inside, XmNx, 0, XmNy, 0, XmNwidth, size.width, XmNheight, size.height,
                  XmNborderWidth, 0, nullptr);
  }
}

zAppFrame::zAppFrame(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* title)
    : zFrameWin(parent, sizer, style, title) {
  markClass(kClassAppFrame);
  setClassName("AppFrameCL");
  zFrameWin::createWidgets();
  connect<windowManagerCloses>(shellWidget, kCloseRequest, this);
}

zAppFrame::~zAppFrame() {
  if (!hasState(kWidgetGone)) {
    disconnect<windowManagerCloses>(shellWidget, kCloseRequest, this);
  }
}
