#pragma once

#include "framework/layout/sizer.h"

/// A sizer that a zSlotLayout places by its number.
class zSlotSizer : public zSizer {
 public:
  /// Slots count from 1. Of `size`, 0 means up to the inner edge and -1 the layout's default.
  zSlotSizer(int slotNumber, const zDimension& size, zSizer* parent = nullptr);
  /// Asks for the layout's default size.
  explicit zSlotSizer(int slotNumber, zSizer* parent = nullptr);

  int slotNumber() const { return number; }
  void setSlotNumber(int slotNumber) { number = slotNumber; }
  const zDimension& slotSize() const { return wanted; }
  void setSlotSize(const zDimension& size) { wanted = size; }

  void getInfo(zLayoutInfo& info) override;
  zSizer* query(int kind) override;

 private:
  int number;
  zDimension wanted;
};

/// The slot of a combo box, which is taller than a tool and so says where it stands across the bar.
class zSlotSizerForComboBox : public zSlotSizer {
 public:
  zSlotSizerForComboBox(int slotNumber, const zPoint& slotPos, const zDimension& size,
                        zSizer* parent = nullptr);

  void getInfo(zLayoutInfo& info) override;
  zSizer* query(int kind) override;

 private:
  zPoint slotPos;
};
