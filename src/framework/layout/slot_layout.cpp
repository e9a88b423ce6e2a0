#include "framework/layout/slot_layout.h"

#include <algorithm>

#include "framework/layout/sizer.h"

namespace {

zRect ownPlace(const zLayoutInfo& info, const zRect& inner) {
  return {info.pos.x, info.pos.y,
          info.size.width == kNotSet ? inner.right : info.pos.x + info.size.width,
          info.size.height == kNotSet ? inner.bottom : info.pos.y + info.size.height};
}

}  // namespace

void zSlotLayout::apply(zRect& rect, zSizerDlist& children, int /*count*/) {
  const zRect inner(rect.left + marginSize.width, rect.top + marginSize.height,
                    rect.right - marginSize.width, rect.bottom - marginSize.height);
  zSizerDlist::Iter walk(children);
  while (zSizer* child = walk.next()) {
    if (child->query(kSizerSlot) == nullptr) {
      zLayoutInfo info;
      child->getInfo(info);
      child->apply(ownPlace(info, inner), kApplyMoves);
    }
  }
  rect = zRect(rect.pos(), placeSlots(children, inner));
}

void zSlotLayout::getInfo(zLayoutInfo& info, zSizerDlist& children, int /*count*/) {
  int rightEdge = 0;
  zSizerDlist::Iter walk(children);
  while (zSizer* child = walk.next()) {
    zLayoutInfo own;
    child->getInfo(own);
    if (own.gravity == kGravityOwnPosition) {
      rightEdge = std::max(rightEdge, own.pos.x + own.size.width);
    }
  }
  raiseToFixedChildren(info, rightEdge);
}
