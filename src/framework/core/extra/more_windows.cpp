// Part of the framework's interface that this program does not use: siblings, handlers taken off
// windows, cursors, adopted panes, fallback resources and the like. Compiled; its behaviour is not
// under test.

#include "framework/core/extra/more_windows.h"

#include <memory>
#include <utility>

#include "framework/core/application.h"
#include "framework/core/dialog_frame.h"
#include "framework/core/window_events_xm.h"
#include "framework/draw/font_dict.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"
#include "framework/draw/x_handles.h"

namespace {

constexpr int kDefaultExtent = 10;

}  // namespace

zWindow* zWindow::nextSibling() {
  if (parentWindow == nullptr) {
    return this;
  }
  zWindow* first = nullptr;
  bool passedThis = false;
  zWindowDlist::Iter walk(parentWindow->childWindows);
  while (zWindow* child = walk.next()) {
    if (passedThis) {
      return child;
    }
    first = first == nullptr ? child : first;
    passedThis = child == this;
  }
  return first;
}

zWindow* zWindow::previousSibling() {
  if (parentWindow == nullptr) {
    return this;
  }
  zWindow* previous = nullptr;
  zWindowDlist::Iter walk(parentWindow->childWindows);
  while (zWindow* child = walk.next()) {
    if (child == this && previous != nullptr) {
      return previous;
    }
    previous = child;
  }
  return previous;
}

void zWindow::setCursor(const zCursor& newCursor) {
  cursor = std::make_unique<zCursor>(newCursor);
  if (isRealized()) {
    // None takes back what was shown before.
    XDefineCursor(XtDisplay(mainWidget), XtWindow(mainWidget), cursor->xCursor());
    XFlush(XtDisplay(mainWidget));
  }
}

void zWindow::removeHandler(zEvH* target, zHandler member, int message) {
  if (handlers != nullptr) {
    handlers->remove(zEvent::of(message), target, member);
  }
}

void zWindow::addParentHandler(zEvH* target, zHandler member) {
  if (parentWindow != nullptr) {
    const auto boundId = static_cast<unsigned>(windowId);
    parentWindow->ensureHandlers().add(
        std::make_unique<zNotifyNode>(target, member, kMsgCommand, boundId, boundId));
  }
}

void zWindow::removeParentHandler(zEvH* target, zHandler member) {
  if (parentWindow != nullptr && parentWindow->handlers != nullptr) {
    parentWindow->handlers->remove(zEvent::of(kMsgCommand, windowId), target, member);
  }
}

void zWindow::adoptFrom(zWindow& other) {
  // This window takes the other's place among the children; the other leaves the tree.
  parentWindow->childWindows.remove(this);
  parentWindow->childWindows.replace(&other, this);
  other.parentWindow = nullptr;
  std::swap(ownSizer, other.ownSizer);
  ownSizer->setWindow(this);
  other.ownSizer->setWindow(&other);
  text = other.text;
  styleBits = other.styleBits;
  classNameText = other.classNameText;
  backPixel = other.backPixel;
  backgroundRgb = other.backgroundRgb;
  handlerMask |= other.handlerMask;
  scroller = std::exchange(other.scroller, nullptr);
  cursor = std::move(other.cursor);
  vertScroll = std::move(other.vertScroll);
  horzScroll = std::move(other.horzScroll);
  if (other.handlers != nullptr) {
    ensureHandlers().takeFrom(*other.handlers);
  }
  if (other.ctrlHandlers != nullptr) {
    ensureCtrlHandlers().takeFrom(*other.ctrlHandlers);
  }
  adoptWidgets(other);
}

void zWindow::adoptWidgets(zWindow& other) {
  other.removeEventHandlers();
  mainWidget = std::exchange(other.mainWidget, nullptr);
  scrollClip = std::exchange(other.scrollClip, nullptr);
  vertScrollWidget = std::exchange(other.vertScrollWidget, nullptr);
  horzScrollWidget = std::exchange(other.horzScrollWidget, nullptr);
  connect<&zWindow::zWindowEventProc>(mainWidget, kWindowEvents, this);
  if (vertScrollWidget != nullptr) {
    disconnectScrollBar<zVertScrollProc>(vertScrollWidget, &other);
    connectScrollBar<zVertScrollProc>(vertScrollWidget, this);
  }
  if (horzScrollWidget != nullptr) {
    disconnectScrollBar<zHorzScrollProc>(horzScrollWidget, &other);
    connectScrollBar<zHorzScrollProc>(horzScrollWidget, this);
  }
}

void zFrameWin::lockMinSize() {
  zRect exterior;
  getExterior(exterior);
  setMinSize(exterior.size());
}

int zDialogFrame::defaultButtonId() {
  const zWindow* button = defaultButton();
  return button == nullptr ? kNoDefaultButton : button->id();
}

void zApp::closeDisplay() {
  theScreen().defaultFont.reset();
  ziDrawCache::instance().setFonts(nullptr);
  theScreen().display = nullptr;
  isDisplaySet = false;
  XtCloseDisplay(xDisplay);
  xDisplay = nullptr;
  XtDestroyApplicationContext(appContext);
  appContext = nullptr;
}

void zApp::setFallbackResources(const char* const* resources) {
  closeDisplay();
  fallbackTexts.clear();
  for (; *resources != nullptr; ++resources) {
    fallbackTexts.emplace_back(*resources);
  }
  fallbackResources.clear();
  for (std::string& text : fallbackTexts) {
    fallbackResources.push_back(text.data());
  }
  fallbackResources.push_back(nullptr);
  openDisplay();
  idle->contextReplaced();
}

void zIdleList::contextReplaced() {
  workProcId = 0;
  if (!isEmpty()) {
    install();
  }
}

zPane::zPane(zWindow* parent, int id)
    : zChildWin(parent, new zSizer(nullptr), 0),
      ziPainted(static_cast<zWindow&>(*this)),
      currentDisplay(ownDisplay.get()) {
  markClass(kClassPane);
  setId(id);
  displayStack.push(ownDisplay.get());
  if (zWindow* replaced = siblingById(id); replaced != nullptr) {
    adoptFrom(*replaced);
    placeholder.reset(replaced);
    connect<&ziPainted::zPaneExposeProc>(mainWidget, kExposures, this);
    ownDisplay->setXWindow(XtWindow(mainWidget));
  }
}

zWindow* zPane::siblingById(int id) {
  zWindowDlist::Iter walk(parent()->children());
  while (zWindow* child = walk.next()) {
    if (child != this && child->id() == id) {
      return child;
    }
  }
  return nullptr;
}

zPaneControl::zPaneControl(zWindow* parent, zSizer* sizer, std::uint32_t style, int id,
                           Create create)
    : zPane(parent, sizer, style, id, create) {
  setBackground(kColorLightGrey);
}

int zPaneControl::handle(zEvent* event) {
  return event->message == kMsgEnable ? enableChanged(static_cast<int>(event->wparam)) : 0;
}

void zPaneControl::notifyParent(int code) {
  zEvent event = zEvent::of(kMsgCommand, id(), this);
  event.lparam = code;
  if (parent() != nullptr) {
    zDispatch(event, parent());
  }
}

int zPaneControl::enableChanged(int /*enabled*/) {
  return 0;
}

void zWindow::getExterior(zRect& rect) {
  if (!isRealized()) {
    getInterior(rect);
    return;
  }
  Position x = 0;
  Position y = 0;
  XtTranslateCoords(mainWidget, 0, 0, &x, &y);
  rect = zRect(zPoint{x, y}, widgetSize(mainWidget));
}

void zWindow::moveResize(int x, int y, int width, int height) {
  if (mainWidget != nullptr) {
    // A strip that was laid out to nothing keeps one pixel.
    const zDimension shown = notEmpty({width, height});
    if (isRealized()) {
      XMoveResizeWindow(XtDisplay(mainWidget), XtWindow(mainWidget), x, y,
                        static_cast<unsigned>(shown.width), static_cast<unsigned>(shown.height));
    }
    XtVaSetValues(mainWidget, XmNx, x, XmNy, y, XmNwidth, shown.width, XmNheight, shown.height,
                  nullptr);
  }
  ownSizer->setPos({x, y});
  ownSizer->setSize({width, height});
}

void zWindow::invalidateRegion(zRegion* region, int erase) {
  zRect box = region->clipBox();
  invalidate(&box, erase);
}

void zWindow::sizerReplaced(zSizer& newSizer) {
  static_cast<void>(ownSizer.release());
  ownSizer.reset(&newSizer);
}

void setConfiguredHeight(zEvent& event, int height) {
  if (event.xevent != nullptr && event.xevent->type == ConfigureNotify) {
    event.xevent->xconfigure.height = height;
  }
}

void zNotifyNodeDlist::takeFrom(zNotifyNodeDlist& other) {
  while (zNotifyNode* node = other.nodes.popFront()) {
    nodes.append(node);
  }
}

void zChildWin::createWidgets() {
  if (sizer()->size().width == kNotSet || sizer()->size().height == kNotSet) {
    sizer()->setSize({kDefaultExtent, kDefaultExtent});
  }
  const zDimension size = sizer()->size();
  mainWidget = XtVaCreateWidget("DrawingArea", xmDrawingAreaWidgetClass, parent()->widget(),
                                XmNuserData, this, XmNmarginWidth, 0, XmNmarginHeight, 0, XmNwidth,
                                size.width, XmNheight, size.height, nullptr);
  zRect place;
  getExterior(place);
  if ((style() & kStyleAbsolute) == 0) {
    zRect outer;
    parent()->getExterior(outer);
    place.moveBy(-outer.left, -outer.top);
  }
  sizer()->setPos(place.pos());
  connect<&zWindow::zWindowEventProc>(mainWidget, kWindowEvents, this);
  takeParentsFont();
}

void zFrameWin::setCaption(const zString& caption) {
  setCaption(caption.c_str());
}

void zFrameWin::setIconicHint() {
  Display* display = XtDisplay(shellWidget);
  std::unique_ptr<XWMHints, int (*)(void*)> hints(XGetWMHints(display, XtWindow(shellWidget)),
                                                  XFree);
  if (hints == nullptr) {
    hints.reset(XAllocWMHints());
  }
  hints->initial_state = IconicState;
  hints->flags |= StateHint;
  XSetWMHints(display, XtWindow(shellWidget), hints.get());
}

void zFrameWin::maximize() {
  const zDimension size = theScreen().size();
  sizer()->setPos({0, 0});
  sizer()->setSize(size);
  for (Widget part : {shellWidget, inner, mainWidget}) {
    XtVaSetValues(part, XmNx, 0, XmNy, 0, XmNwidth, size.width, XmNheight, size.height, nullptr);
  }
}

void zPane::invalidateRegion(zRegion* region, int erase) {
  currentDisplay->invalidateRegion(region, erase);
}

void zPane::pushDisplay(zDisplay* display) {
  displayStack.push(display);
  currentDisplay = display;
}

void zPane::popDisplay() {
  displayStack.pop();
  currentDisplay = displayStack.isEmpty() ? ownDisplay.get() : displayStack.top();
}
