#include "framework/core/notify.h"

#include <utility>

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

void zNotifyNodeDlist::takeFrom(zNotifyNodeDlist& other) {
  while (zNotifyNode* node = other.nodes.popFront()) {
    nodes.append(node);
  }
}
