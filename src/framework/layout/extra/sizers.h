#pragma once

#include <functional>

#include "framework/layout/sizers.h"

/// Part of the framework's interface that this program does not use; compiled, its behaviour is not
/// under test.

/// A leaf that lets another object answer the layout's questions through two of its members.
class zRedirSizer : public zLeafSizer {
 public:
  template <class T>
  using InfoMember = void (T::*)(zLayoutInfo&);
  template <class T>
  using ApplyMember = void (T::*)(const zRect&, int noMove);

  /// `object` is not owned and must outlive the sizer; it and each member may be null, and the
  /// answer is then that of a zLeafSizer.
  template <class T>
  zRedirSizer(T* object, InfoMember<T> infoMember, ApplyMember<T> applyMember,
              zSizer* parent = nullptr)
      : zLeafSizer(parent) {
    if (object != nullptr && infoMember != nullptr) {
      askInfo = [object, infoMember](zLayoutInfo& info) { (object->*infoMember)(info); };
    }
    if (object != nullptr && applyMember != nullptr) {
      tellApply = [object, applyMember](const zRect& rect, int noMove) {
        (object->*applyMember)(rect, noMove);
      };
    }
  }

  void getInfo(zLayoutInfo& info) override;
  void apply(const zRect& rect, int noMove) override;

 private:
  std::function<void(zLayoutInfo&)> askInfo;
  std::function<void(const zRect&, int)> tellApply;
};

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
