#pragma once

#include "framework/controls/combo_box.h"
#include "tests/ui/controls/list_view.h"

/// A combo box with four rows.
class ComboTest : public ControlTest {
 protected:
  static constexpr int kId = 100;
  static constexpr std::uint32_t kFullStyle = 0x50310042;
  static constexpr std::uint32_t kStaticStyle = 0x50310043;
  static constexpr int kWidth = 200;
  static constexpr int kHeight = 140;

  ComboTest() {
    fill(combo);
    ui::drain();
  }
  static void fill(zComboBoxBase& filled) {
    for (const char* text : {"alpha", "beta", "gamma", "delta"}) {
      filled.add(text);
    }
  }
  static zSizer* place(int y = 10) { return new zSizer(10, y, kWidth, kHeight); }
  std::vector<int> codes() { return takeCodes(*frame, {kComboFocusIn, kComboFocusOut}); }

  zComboBoxFull combo{frame.get(), place(), kFullStyle, kId};
};
