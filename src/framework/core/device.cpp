#include "framework/core/device.h"

#include "framework/core/window.h"

zDevice::zDevice(zWindow* owner, std::uint32_t mask) : ownerWindow(owner), ownerMask(mask) {
  markClass(kClassDevice);
}

zDevice::~zDevice() = default;

int zDevice::dispatch(zEvent* event) {
  const ziAlive alive(this);
  if (shared != nullptr && shared->handlers != nullptr && shared->handlers->run(*event) != 0) {
    return 1;
  }
  // A device that a handler destroyed can take no more part in the event.
  if (!alive) {
    return 1;
  }
  return handlers == nullptr ? 0 : handlers->run(*event);
}

void zDevice::addHandler(zEvH* target, zHandler member, int message, unsigned idLow,
                         unsigned idHigh) {
  ensureHandlers().add(std::make_unique<zNotifyNode>(target, member, message, idLow, idHigh));
  markOwner();
}

void zDevice::addHandler(zEvH* target, zHandler member, int message) {
  ensureHandlers().add(std::make_unique<zNotifyNode>(target, member, message));
  markOwner();
}

void zDevice::removeHandler(zEvH* target, zHandler member, int message, unsigned id) {
  if (handlers != nullptr) {
    handlers->remove(zEvent::of(message, id), target, member);
  }
}

zNotifyNodeDlist& zDevice::ensureHandlers() {
  if (handlers == nullptr) {
    handlers = std::make_unique<zNotifyNodeDlist>();
  }
  return *handlers;
}

void zDevice::markOwner() {
  if (ownerWindow != nullptr) {
    ownerWindow->addHandlerMask(ownerMask);
  }
}
