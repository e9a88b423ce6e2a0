#pragma once

#include "framework/layout/sizer.h"

/// Keeps its window as large as the window's parent.
class zSizeWithParent : public zSizer {
 public:
  using zSizer::zSizer;

  void parentSized(ziSizerWindow& window, const zDimension& newSize) override;
  /// Asks for all the room that is left.
  void getInfo(zLayoutInfo& info) override;
  zSizer* query(int kind) override;
};
