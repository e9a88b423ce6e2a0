#pragma once

#include "framework/layout/layout.h"

/// Extents of a slot with a meaning of their own.
enum zSlotExtent : int {
  kSlotToEdge = 0,          ///< up to the inner edge
  kSlotDefaultExtent = -1,  ///< that of the layout's default slot
};

/// Places children one after the other by their slot numbers; a number that nobody has leaves a
/// gap. Children that are no slot sizers stand at positions of their own. Of two children with the
/// same number the second gets an empty rectangle, and so does a number below 1.
class zSlotLayout : public zLayout {
 public:
  /// Slots follow one another to the right, or downward.
  void setHorizontal(bool on) { horizontal = on; }
  bool isHorizontal() const { return horizontal; }
  /// Kept free on all sides.
  const zDimension& margin() const { return marginSize; }
  void setMargin(const zDimension& size) { marginSize = size; }
  /// Of a gap, and of a slot that asks for it.
  const zDimension& defaultSlotSize() const { return defaultSize; }
  void setDefaultSlotSize(const zDimension& size) { defaultSize = size; }

  /// `rect` shrinks to the slots and gaps together; the margins are no part of that.
  void apply(zRect& rect, zSizerDlist& children, int count) override;
  /// Asks for what the children at positions of their own need.
  void getInfo(zLayoutInfo& info, zSizerDlist& children, int count) override;

 private:
  /// What the slots and gaps take together (extra/sizers.cpp, as slotRect and centredAcross are).
  zDimension placeSlots(zSizerDlist& children, const zRect& inner) const;
  zRect slotRect(const zLayoutInfo& info, const zRect& inner, const zPoint& at) const;
  zRect centredAcross(zRect slot, const zLayoutInfo& info, const zRect& inner) const;

  bool horizontal = true;
  zDimension marginSize;
  zDimension defaultSize;
};
