#include "framework/layout/slot_sizer.h"

#include "framework/layout/slot_layout.h"

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
