#pragma once

#include <algorithm>

#include "framework/controls/combo_box.h"
#include "tests/ui/controls/control_fixture.h"

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
  static void fill(zComboBoxBase& filled,
                   const std::vector<RWCString>& texts = {"alpha", "beta", "gamma", "delta"}) {
    filled.addAll(texts);
  }
  static void clear(zComboBoxBase& filled) {
    while (filled.remove(0) != 0) {
    }
  }
  static zSizer* place(int y = 10) { return new zSizer(10, y, kWidth, kHeight); }
  static Widget listOf(const zComboBoxBase& of) { return ui::part(of.holder(), "ScrolledList"); }
  static Widget arrowOf(const zComboBoxBase& of) { return ui::part(of.holder(), "ArrowButton"); }

  /// The notification codes since the last call, without those of the focus.
  std::vector<int> codes() {
    std::vector<int> all;
    for (const auto& [id, code] : told()) {
      if (code != kComboFocusIn && code != kComboFocusOut) {
        all.push_back(code);
      }
    }
    return all;
  }
  /// The row, what the entry shows, and the codes that the parent got: all that a step changes.
  std::string state(const zComboBoxBase& of) {
    std::string text = std::to_string(of.curSel()) + " " + textView(of.widget());
    for (const int code : codes()) {
      text += " " + std::to_string(code);
    }
    EXPECT_EQ(selectedRows(listOf(of)),
              of.curSel() < 0 ? std::vector<int>{} : std::vector<int>{of.curSel()});
    return text;
  }

  zComboBoxFull combo{frame.get(), place(), kFullStyle, kId};
};
