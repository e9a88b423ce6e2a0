// Part of the framework's interface that this program does not use; compiled, its behaviour is not
// under test.

#include "framework/layout/extra/sizers.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "framework/layout/slot_layout.h"

namespace {

/// A slot during one pass. One that finds no place keeps its empty rectangle.
struct Placing {
  zSlotSizer* slot;
  zLayoutInfo info;
  zRect rect;
  bool isPlaced;
};

std::vector<Placing> collectSlots(zSizerDlist& children) {
  std::vector<Placing> placings;
  zSizerDlist::Iter walk(children);
  while (zSizer* child = walk.next()) {
    if (auto* slot = static_cast<zSlotSizer*>(child->query(kSizerSlot)); slot != nullptr) {
      placings.push_back({slot, {}, {}, false});
      slot->getInfo(placings.back().info);
    }
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
    largest = std::max(largest, placing.slot->slotNumber());
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

void zRedirSizer::getInfo(zLayoutInfo& info) {
  if (askInfo) {
    askInfo(info);
  } else {
    zLeafSizer::getInfo(info);
  }
}

void zRedirSizer::apply(const zRect& rect, int noMove) {
  store(rect);
  if (tellApply) {
    tellApply(rect, noMove);
  }
}

zSlotSizer::zSlotSizer(int slotNumber, const zDimension& slotSize, zSizer* parent)
    : zSizer(parent), number(slotNumber), wanted(slotSize) {
  setGravity(kGravityLeft);
  setSize(wanted);
}

zSlotSizer::zSlotSizer(int slotNumber, zSizer* parent)
    : zSlotSizer(slotNumber, {kSlotDefaultExtent, kSlotDefaultExtent}, parent) {}

void zSlotSizer::getInfo(zLayoutInfo& info) {
  reportSize(info, wanted);
}

zSizer* zSlotSizer::query(int kind) {
  return kind == kSizerSlot ? this : zSizer::query(kind);
}

zSlotSizerForComboBox::zSlotSizerForComboBox(int slotNumber, const zPoint& position,
                                             const zDimension& slotSize, zSizer* parent)
    : zSlotSizer(slotNumber, slotSize, parent), slotPos(position) {
  setGravity(kGravityRight);
}

void zSlotSizerForComboBox::getInfo(zLayoutInfo& info) {
  zSlotSizer::getInfo(info);
  info.pos = slotPos;
}

zSizer* zSlotSizerForComboBox::query(int kind) {
  return kind == kSizerSlotForComboBox ? this : zSlotSizer::query(kind);
}

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

zDimension zSlotLayout::placeSlots(zSizerDlist& children, const zRect& inner) const {
  std::vector<Placing> placings = collectSlots(children);
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
    placing.slot->apply(placing.rect, kApplyMoves);
  }
  return total;
}

void zSizer::replaceBy(zSizer* newSizer) {
  newSizer->setParent(nullptr);
  while (zSizer* child = children == nullptr ? nullptr : children->popFront()) {
    child->parentSizer = newSizer;
    newSizer->addChild(child);
  }
  count = 0;
  newSizer->place = place;
  newSizer->extents = extents;
  newSizer->layoutObject = layoutObject;
  if (parentSizer != nullptr) {
    parentSizer->exchangeChild(this, newSizer);
    newSizer->parentSizer = std::exchange(parentSizer, nullptr);
  }
  newSizer->setWindow(servedWindow, static_cast<zWindowMode>(mode));
  if (servedWindow != nullptr) {
    servedWindow->sizerReplaced(*newSizer);
  }
  delete this;
}

void zSizer::exchangeChild(const zSizer* oldChild, zSizer* newChild) {
  // The place among the siblings decides what room a child gets, so it is kept.
  for (int left = count; left > 0; --left) {
    zSizer* child = children->popFront();
    children->append(child == oldChild ? newChild : child);
  }
}
