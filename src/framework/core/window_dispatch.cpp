// Handlers of a window and the order in which events are offered to them.

#include "framework/core/application.h"
#include "framework/core/window.h"
#include "framework/core/window_events_xm.h"

zNotifyNodeDlist& zWindow::ensureHandlers() {
  if (handlers == nullptr) {
    handlers = std::make_unique<zNotifyNodeDlist>();
  }
  return *handlers;
}

zNotifyNodeDlist& zWindow::ensureCtrlHandlers() {
  if (ctrlHandlers == nullptr) {
    ctrlHandlers = std::make_unique<zNotifyNodeDlist>();
  }
  return *ctrlHandlers;
}

void zWindow::noteHandlerMask(int message) {
  switch (message) {
    case kMsgActivate:
      handlerMask |= kMaskActivate;
      break;
    case kMsgFocusIn:
      handlerMask |= kMaskFocusIn;
      break;
    case kMsgClose:
      handlerMask |= kMaskClose;
      break;
    case kMsgMouseMove:
      handlerMask |= kMaskMouseMove;
      break;
    case kMsgButtonDown:
      handlerMask |= kMaskButtonDown;
      break;
    case kMsgButtonUp:
      handlerMask |= kMaskButtonUp;
      break;
    default:
      break;
  }
}

void zWindow::addHandler(zEvH* target, zHandler member, int message) {
  addPlainHandler(target, member, message);
  noteHandlerMask(message);
}

void zWindow::addPlainHandler(zEvH* target, zHandler member, int message) {
  ensureHandlers().add(std::make_unique<zNotifyNode>(target, member, message));
}

void zWindow::addCtrlHandler(zEvH* target, zHandler member, int code) {
  if (parentWindow != nullptr) {
    parentWindow->ensureCtrlHandlers().add(
        std::make_unique<zCtrlNotifyNode>(target, member, windowId, mainWidget, code));
  }
}

void zWindow::removeCtrlHandler(zEvH* target, zHandler member, int code) {
  if (parentWindow != nullptr && parentWindow->ctrlHandlers != nullptr) {
    zEvent probe = zEvent::of(kMsgCommand, windowId);
    probe.lparam = code;
    parentWindow->ctrlHandlers->remove(probe, target, member);
  }
}

int zDispatch(zEvent& event, zWindow* window) {
  const ziAlive alive(window);
  if (window->runCtrlHandlers(event) != 0) {
    return 1;
  }
  if (!alive || zDispatchHandlers(event, window) != 0) {
    return 1;
  }
  if (event.message == kMsgCommand && alive) {
    return window->command(&event);
  }
  return 0;
}

int zDispatchHandlers(zEvent& event, zWindow* window) {
  const ziAlive alive(window);
  if (window->runHandlers(event) != 0) {
    return 1;
  }
  // A window that a handler destroyed can take no more part in its event.
  if (!alive) {
    return 1;
  }
  zApp* app = zApp::instance();
  return app == nullptr ? 0 : app->handlers().run(event);
}

void zWindow::sizeChildren(zEvent* event) {
  const zDimension newSize = configuredSize(event, ownSizer->size());
  ownSizer->setSize(newSize);
  zWindowDlist::Iter walk(childWindows);
  while (zWindow* child = walk.next()) {
    child->ownSizer->parentSized(*child, newSize);
  }
  const zRect rect(ownSizer->pos(), newSize);
  ownSizer->update(&rect);
}

void zWindow::runResizeSequence(zEvent& event) {
  const ziAlive alive(this);
  event.wparam = 0;
  sizeChildren(&event);
  if (alive && scroller != nullptr) {
    scroller->resized();
  }
  if (alive && isRealized()) {
    size(&event);
  }
  if (event.wparam != 0) {
    setConfiguredHeight(event, static_cast<int>(event.wparam));
  }
}

int zWindow::activate(zEvent* /*event*/) {
  return 0;
}

int zWindow::size(zEvent* event) {
  ownSizer->setSize(configuredSize(event, ownSizer->size()));
  return 0;
}

int zWindow::move(zEvent* /*event*/) {
  return 0;
}
int zWindow::close(zEvent* /*event*/) {
  return 0;
}
int zWindow::command(zEvent* /*event*/) {
  return 0;
}

int zWindow::scroll(zEvent* event) {
  return scroller == nullptr ? 0 : scroller->dispatchScroll(event);
}

int zWindow::mouseMove(zEvent* /*event*/) {
  return 0;
}
int zWindow::mouseButtonUp(zEvent* /*event*/) {
  return 0;
}
int zWindow::mouseButtonDown(zEvent* /*event*/) {
  return 0;
}
int zWindow::focus(zEvent* /*event*/) {
  return 0;
}
int zWindow::character(zEvent* /*event*/) {
  return 0;
}

void zWindow::buttonPressNotify(zEvent* event) {
  if (parentWindow != nullptr) {
    parentWindow->buttonPressNotify(event);
  }
}
