#include "framework/layout/slot_layout.h"

#include <algorithm>
#include <vector>

#include "framework/layout/normal_layout.h"
#include "framework/layout/slot_sizer.h"

namespace {

/// A child during one pass. A slot that found no place keeps its empty rectangle.
struct Placing {
  zSizer* sizer;
  const zSlotSizer* slot;  ///< null for a child at a position of its own
  zLayoutInfo info;
  zRect rect;
  bool isPlaced;
};

zRect ownPlace(const zLayoutInfo& info, const zRect& inner) {
  return {info.pos.x, info.pos.y,
          info.size.width == kNotSet ? inner.right : info.pos.x + info.size.width,
          info.size.height == kNotSet ? inner.bottom : info.pos.y + info.size.height};
}

std::vector<Placing> collect(zSizerDlist& children, int count, const zRect& inner) {
  std::vector<Placing> placings;
  placings.reserve(static_cast<std::size_t>(count));
  zSizerDlist::Iter walk(children);
  while (zSizer* child = walk.next()) {
    const auto* slot = static_cast<zSlotSizer*>(child->query(kSizerSlot));
    Placing placing{child, slot, {}, {}, slot == nullptr};
    child->getInfo(placing.info);
    placing.rect = slot == nullptr ? ownPlace(placing.info, inner) : zRect();
    placings.push_back(placing);
  }
  return placings;
}

Placing* findSlot(std::vector<Placing>& placings, int number) {
  const auto found = std::find_if(placings.begin(), placings.end(), [number](const Placing& p) {
    return !p.isPlaced && p.slot->slotNumber() == number;
  });
  return found == placings.end() ? nullptr : &*found;
}

int largestNumber(const std::vector<Placing>& placings) {
  int largest = 0;
  for (const Placing& placing : placings) {
    largest = std::max(largest, placing.slot == nullptr ? 0 : placing.slot->slotNumber());
  }
  return largest;
}

int farEdge(int near, int extent, int limit, int defaultExtent) {
  switch (extent) {
    case kSlotToEdge:
      return limit;
    case kSlotDefaultExtent:
      return near + defaultExtent;
    default:
      return near + extent;
  }
}

}  // namespace

zRect zSlotLayout::slotRect(const zLayoutInfo& info, const zRect& inner, const zPoint& at) const {
  zDimension size = info.size;
  if (!horizontal && info.gravity == kGravityRight) {
    // Intended: in an upright bar the position of a combo box's slot stands for its height.
    size.height = info.pos.y;
  }
  return {at.x, at.y, farEdge(at.x, size.width, inner.right, defaultSize.width),
          farEdge(at.y, size.height, inner.bottom, defaultSize.height)};
}

zRect zSlotLayout::centredAcross(zRect slot, const zLayoutInfo& info, const zRect& inner) const {
  if (!horizontal) {
    slot.moveBy((inner.right - slot.right) / 2, 0);
  } else if (slot.bottom != inner.bottom && info.gravity == kGravityRight) {
    slot.top = info.pos.y;
  } else {
    slot.moveBy(0, (inner.bottom - slot.bottom) / 2);
  }
  return slot;
}

void zSlotLayout::apply(zRect& rect, zSizerDlist& children, int count) {
  const zRect inner(rect.left + marginSize.width, rect.top + marginSize.height,
                    rect.right - marginSize.width, rect.bottom - marginSize.height);
  std::vector<Placing> placings = collect(children, count, inner);
  const int last = largestNumber(placings);
  zPoint at = inner.pos();
  zDimension total;
  for (int number = 1; number <= last; ++number) {
    zDimension step = defaultSize;
    if (Placing* placing = findSlot(placings, number); placing != nullptr) {
      const zRect slot = slotRect(placing->info, inner, at);
      placing->rect = centredAcross(slot, placing->info, inner);
      placing->isPlaced = true;
      step = slot.size();
    }
    (horizontal ? at.x : at.y) += horizontal ? step.width : step.height;
    (horizontal ? total.width : total.height) += horizontal ? step.width : step.height;
  }
  for (const Placing& placing : placings) {
    placing.sizer->apply(placing.rect, kApplyMoves);
  }
  rect = zRect(rect.pos(), total);
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
