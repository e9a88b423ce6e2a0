#include "framework/core/notify.h"

#include <utility>

#include "framework/core/evh.h"
#include "framework/core/window.h"

namespace {

constexpr unsigned kAllIds = ~0U;
constexpr int kCodeMask = 0xFFFF;

// Comparing pointers to virtual members is left open by the language; the compilers that this
// program is built with compare the slot, which is what a binding means. Only this function does
// it.
bool sameMember(zHandler a, zHandler b) {
  return a == b;
}

}  // namespace

zNotifyNode::zNotifyNode(zEvH* boundTo, zHandler handler, int messageNumber)
    : zNotifyNode(boundTo, handler, messageNumber, 0, kAllIds) {}

zNotifyNode::zNotifyNode(zEvH* boundTo, zHandler handler, int messageNumber, unsigned low,
                         unsigned high)
    : idLow(low), idHigh(high), message(messageNumber), member(handler), target(boundTo) {}

bool zNotifyNode::matches(const zEvent& event) const {
  const auto id = static_cast<unsigned>(event.wparam);
  return event.message == message && id >= idLow && id <= idHigh;
}

bool zNotifyNode::isBoundTo(const zEvH* object, zHandler handler) const {
  return target == object && sameMember(member, handler);
}

zCtrlNotifyNode::zCtrlNotifyNode(zEvH* boundTo, zHandler handler, int id, Widget control,
                                 int notifyCode)
    : zNotifyNode(boundTo, handler, kMsgCommand, static_cast<unsigned>(id),
                  static_cast<unsigned>(id)),
      widget(control),
      code(notifyCode & kCodeMask) {}

bool zCtrlNotifyNode::matches(const zEvent& event) const {
  return zNotifyNode::matches(event) && event.lparam == code;
}

zNotifyNodeDlist::~zNotifyNodeDlist() {
  while (zNotifyNode* node = nodes.popFront()) {
    delete node;
  }
}

void zNotifyNodeDlist::add(std::unique_ptr<zNotifyNode> node) {
  nodes.add(node.release());
}

bool zNotifyNodeDlist::remove(const zEvent& probe, const zEvH* target, zHandler member) {
  zTypedDlist<zNotifyNode>::Iter walk(nodes);
  while (zNotifyNode* node = walk.next()) {
    if (node->matches(probe) && node->isBoundTo(target, member)) {
      walk.removeCurrent();
      // Walks that stand on the link only follow it; none looks at the node again.
      delete node;
      return true;
    }
  }
  return false;
}

int zNotifyNodeDlist::run(zEvent& event) {
  zTypedDlist<zNotifyNode>::Iter walk(nodes);
  while (const zNotifyNode* node = walk.next()) {
    if (node->matches(event) && node->call(&event) != 0) {
      return 1;
    }
  }
  return 0;
}

namespace {

constexpr int kClassCount = 80;

}  // namespace

zEvH::zEvH() {
  markClass(kClassEvH);
}

zEvH::~zEvH() = default;

int zEvH::handle(zEvent* /*event*/) {
  return 0;
}

bool zEvH::isA(int classNumber) const {
  if (classNumber < 0 || classNumber >= kClassCount) {
    return false;
  }
  return (classBits[classNumber / 8] & (1U << (classNumber % 8))) != 0;
}

void zEvH::markClass(int classNumber) {
  auto& bits = classBits[classNumber / 8];
  bits = static_cast<std::uint8_t>(bits | (1U << (classNumber % 8)));
}

void zEvH::setState(StateFlag flag, bool on) {
  stateFlags = static_cast<std::uint16_t>(on ? stateFlags | flag : stateFlags & ~flag);
}

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
  handlersToAddTo().add(std::make_unique<zNotifyNode>(target, member, message, idLow, idHigh));
}

void zDevice::addHandler(zEvH* target, zHandler member, int message) {
  handlersToAddTo().add(std::make_unique<zNotifyNode>(target, member, message));
}

void zDevice::removeHandler(zEvH* target, zHandler member, int message, unsigned id) {
  if (handlers != nullptr) {
    handlers->remove(zEvent::of(message, id), target, member);
  }
}

zNotifyNodeDlist& zDevice::handlersToAddTo() {
  if (handlers == nullptr) {
    handlers = std::make_unique<zNotifyNodeDlist>();
  }
  if (ownerWindow != nullptr) {
    ownerWindow->addHandlerMask(ownerMask);
  }
  return *handlers;
}
