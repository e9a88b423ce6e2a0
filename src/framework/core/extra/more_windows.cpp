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
