// Combo boxes: rows, entry, keys, notifications, and the list that drops down.

#include "framework/controls/combo_box.h"

#include "framework/draw/screen.h"
#include "tests/ui/controls/control_fixture.h"

namespace {

constexpr std::uint32_t kStyle = kStyleControlStop | kStyleBothScrolls;

/// Two combo boxes with four rows each; the entry of the second is fixed.
class ComboBox : public ControlTest {
 protected:
  ComboBox() {
    combo.addAll({"alpha", "beta", "gamma", "delta"});
    fixed.addAll({"alpha", "beta", "Apple", ""});
  }
  static Widget listOf(const zComboBoxBase& of) { return ui::part(of.holder(), "ScrolledList"); }
  static Widget arrowOf(const zComboBoxBase& of) { return ui::part(of.holder(), "ArrowButton"); }
  static void clear(zComboBoxBase& box) {
    while (box.remove(0) != 0) {
    }
  }

  /// What the entry shows, its row, the selected one, and what has been told.
  std::string state(const zComboBoxBase& box) {
    ui::drain();
    return ui::textView(box.widget()) + " " + std::to_string(box.curSel()) + ": " +
           chosenIn(listOf(box)) + heard();
  }

  zComboBoxFull combo{&frame, place(10, 140), kStyle, 1};
  zComboBoxStatic fixed{&frame, place(200, 140), kStyle, 2};
};

TEST_F(ComboBox, IsAsHighAsItsEntryWithAnArrowBesideItAndAListBelowOrAbove) {
  const auto places = [&] {
    return placesOf({combo.holder(), combo.widget(), arrowOf(combo),
                     ui::part(combo.holder(), "zAppComboShell"),
                     ui::part(combo.holder(), "ScrolledListSW")});
  };
  combo.showDropDown();
  // A column of the entry is cut off on purpose.
  EXPECT_EQ(places(), "10,10 200x23; 9,10 181x23; 190,10 20x23; 9,33 200x117; 9,33 200x117; ");
  combo.moveResize(30, 40, 150, 90);
  combo.setFontSpec(zFontSpec("courier", {0, 24}), 1);
  combo.showDropDown();
  frame.moveResize(60, theScreen().screenHeight - 120, 400, 110);
  const auto isAbove = [&] {
    combo.showDropDown();
    return places() == "30,40 150x35; 29,40 131x35; 160,40 20x35; 29,-15 150x55; 29,-15 150x55; ";
  };
  ui::waitFor(isAbove, "the list above the entry at the lower edge of the screen");
}

TEST_F(ComboBox, WhatTheProgramChangesShowsAndIsToldNobody) {
  const auto after = [&](int result) { return std::to_string(result) + " " + state(combo); };
  EXPECT_EQ(after(combo.setCurSel(2)), "2 gamma^ 2: gamma ");
  EXPECT_EQ(after(combo.setCurSel(4)), "-1 gamma^ 2: gamma ");
  EXPECT_EQ(after(combo.setCurSel(-1)), "-1 ^ -1: ");
  EXPECT_EQ(after(combo.selectString("delta")), "3 delta^ 3: delta ");
  combo.setCurSel(0);
  combo.setText("typed");
  EXPECT_EQ(after(combo.insert("new", 0)), "0 typed^ 1: alpha ");
  EXPECT_EQ(after(combo.insert("end", -1)), "5 typed^ 1: alpha ");
  EXPECT_EQ(after(combo.insert("behind", 2)), "2 typed^ 1: alpha ");
  EXPECT_EQ(after(combo.add("last")), "7 typed^ 1: alpha ");
  EXPECT_EQ(rowsIn(listOf(combo)), "new alpha behind beta gamma delta end last ");
  EXPECT_EQ(after(combo.remove(1)), "1 behind^ 1: behind ");
  EXPECT_EQ(after(combo.remove(6)), "1 end^ 5: end ");
  EXPECT_EQ(after(combo.remove(6)), "0 end^ 5: end ");
  clear(combo);
  EXPECT_EQ(after(combo.count()), "0 ^ -1: ");
  combo.add("row");
  combo.setText("kept");
  EXPECT_EQ(after(combo.remove(0)), "1 kept^ -1: ");
  RWCString text = "untouched";
  EXPECT_EQ(combo.itemText(text, 0), 0);
  EXPECT_EQ(text, RWCString(""));

  zComboBoxStatic sorted(&frame, place(10, 140), kStyle | kComboSorted, 3);
  sorted.addAll({"b", "A", "a"});
  sorted.insert("z", 0);
  EXPECT_EQ(sorted.add("c"), 0) << "before the first greater row, wherever that stands";
  sorted.setCurSel(2);
  sorted.addAll({"d", "B"});
  EXPECT_EQ(rowsIn(listOf(sorted)) + state(sorted), "B c d z A a b A^ 4: A ");
}

TEST_F(ComboBox, KeysAndTheMouseMoveInTheList) {
  clear(combo);
  for (int row = 0; row < 30; ++row) {
    combo.add(std::to_string(row).c_str());
  }
  ui::focus(combo);
  ASSERT_EQ(ui::numbers(listOf(combo), {"visibleItemCount"}), "6 ");
  const auto walk = [&](int row, std::initializer_list<ui::KeySymbol> keys) {
    combo.setCurSel(row);
    heard();
    std::string way;
    for (const ui::KeySymbol key : keys) {
      ui::pressKey(key);
      const std::string number = std::to_string(combo.curSel());
      EXPECT_EQ(
          combo.curSel() == row ? heard() : state(combo),
          combo.curSel() == row ? "" : "[" + number + "]^ " + number + ": " + number + " 1:1 ");
      row = combo.curSel();
      way += number + " ";
    }
    return way;
  };
  EXPECT_EQ(walk(-1, {XK_Up, XK_Page_Up, XK_Down, XK_Up, XK_Home, XK_Page_Up, XK_Page_Down}),
            "-1 -1 0 0 0 0 6 ");
  EXPECT_EQ(walk(1, {XK_Page_Up, XK_Down, XK_Up, XK_End, XK_Down, XK_End, XK_Page_Down}),
            "0 1 0 29 29 29 29 ");
  EXPECT_EQ(walk(28, {XK_Page_Down, XK_Page_Up, XK_Up, XK_Home}), "29 23 22 0 ");
  EXPECT_EQ(walk(-1, {XK_Home}), "0 ");
  ui::pressKey(XK_End, ui::kShift);
  ui::pressKey(XK_Down, ui::kControl);
  EXPECT_EQ(state(combo), "[0]^ 0: 0 ");

  // Its list opens at its row; and scrolled by the mouse it stays open.
  combo.setCurSel(8);
  combo.showDropDown();
  Widget bar = ui::part(combo.holder(), "VertScrollBar");
  ui::click(bar, ui::areaOf(bar).width / 2, ui::areaOf(bar).height - 5);
  ui::click(listOf(combo), ui::kWheelDown);
  ui::click(listOf(combo), ui::kWheelDown);
  EXPECT_EQ(heard(), "1:7 ") << "the grab of the bar is no change of the focus";
  EXPECT_EQ(chosenIn(listOf(combo)), "");
  combo.hideDropDown();
  combo.showDropDown();
  EXPECT_EQ(chosenIn(listOf(combo)), "8 ");
  combo.hideDropDown();

  ui::focus(fixed);
  std::string way;
  for (const char* letter : {"a", "a", "A", "x", " ", "b", "b"}) {
    ui::typeText(letter);
    way += std::to_string(fixed.curSel());
  }
  EXPECT_EQ(way, "0200011") << "to the next row that begins with the letter";
  EXPECT_EQ(state(fixed), "[beta]^ 1: beta 1:8 1:7 1:8 1:3 2:4 2:1 2:1 2:1 2:1 ");
}

TEST_F(ComboBox, WhatTheUserTypesIsToldAndDeselectsTheRow) {
  combo.setCurSel(1);
  ui::focus(combo);
  ui::typeText("x");
  EXPECT_EQ(state(combo), "betax^ -1: 1:4 1:6 1:5 1:1 ");
  ui::pressKey('a', ui::kControl);
  ui::pressKey(XK_Clear);
  ui::pressKey('x', ui::kAlt);
  EXPECT_EQ(state(combo), "betax^ -1: ") << "no control characters";
  ui::pressKey(XK_Down);
  ui::typeText("y");
  EXPECT_EQ(state(combo), "y^ -1: 1:1 1:6 1:5 1:1 ") << "over what was chosen";
  clear(combo);
  ui::typeText("y");
  ui::pressKey(XK_Home);
  ui::typeText("x");
  EXPECT_EQ(state(combo), "x^y -1: 1:6 1:5 1:6 1:5 ") << "the caret moves where no list does";

  combo.add("two\nlines\n");
  combo.setCurSel(0);
  RWCString row;
  EXPECT_EQ(combo.itemText(row, 0), 1);
  EXPECT_EQ(row, RWCString("two\nlines\n"));
  EXPECT_EQ(combo.text(), RWCString("two lines"));
}

TEST_F(ComboBox, OneListIsShownAtATimeAndIsHiddenByWhatLeavesItsComboBoxOrMovesIt) {
  const auto arrow = [&] { ui::click(arrowOf(combo)); };
  const auto press = [](ui::KeySymbol key, unsigned modifiers = 0) {
    return [=] { ui::pressKey(key, modifiers); };
  };
  const auto clickTwice = [&](int row) {
    ui::clickRow(listOf(combo), 2);
    combo.showDropDown();
    ui::click(listOf(combo), 10, 10 + 18 * row);
  };
  // What is done while the first list is shown; what is told, and whose list is on the screen then.
  const std::tuple<const char*, std::function<void()>, const char*> steps[] = {
      {"its arrow", arrow, "1:7 1:4 1:8 "},
      {"a key", press(XK_Down, ui::kAlt), "1:7 1:8 "},
      {"a key in the list", press(XK_Down), "1:7 1:1 +1"},
      {"Return", press(XK_Return), "1:8 "},
      {"Escape", press(XK_Escape), "1:7 1:8 "},
      {"a choice", [&] { ui::clickRow(listOf(combo), 2); }, "1:7 1:8 1:1 "},
      {"quick clicks on two rows", [&] { clickTwice(0); }, "1:7 1:8 1:1 1:7 1:8 1:1 1:2 "},
      {"quick clicks on a row", [&] { clickTwice(2); }, "1:7 1:8 1:1 1:7 1:8 1:2 "},
      {"a fixed entry", [&] { ui::click(fixed.widget()); }, "1:7 1:8 1:3 2:4 2:7 +2"},
      {"another button", [&] { ui::click(fixed.widget(), ui::kRightButton); }, "2:8 1:7 1:8 "},
      {"the other's arrow", [&] { ui::click(arrowOf(fixed)); }, "1:7 1:8 2:7 +2"},
      {"a place without a focus", [&] { ui::click(frame.widget(), 350, 280); }, "2:8 1:7 1:8 "},
      {"another focus", [&] { ui::focus(combo); }, "1:7 2:3 1:4 +1"},
      {"a move", [&] { combo.moveResize(20, 10, 200, 140); }, "1:8 "},
      {"the end of a dialog", closeOpenDropDown, "1:7 1:8 "},
      {"disabling", [&] { combo.disable(); }, "1:7 2:4 1:8 "},
      {"the arrow of a disabled one", arrow, ""},
  };
  for (const auto& [name, act, expected] : steps) {
    combo.showDropDown();
    act();
    std::string shown = heard();
    for (const zComboBoxBase* box : std::initializer_list<const zComboBoxBase*>{&combo, &fixed}) {
      shown += ui::isViewable(listOf(*box)) ? "+" + std::to_string(box->id()) : "";
    }
    EXPECT_EQ(shown, expected) << name;
  }
}

}  // namespace
