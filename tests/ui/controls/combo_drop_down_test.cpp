// The drop-down list of combo boxes: how it opens, where it goes, what closes it.

#include <functional>
#include <memory>

#include <gmock/gmock.h>
#include <X11/keysym.h>

#include "framework/draw/screen.h"
#include "tests/ui/controls/combo_fixture.h"
#include "tests/ui/support/ui_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class DropDown : public ComboTest {
 protected:
  DropDown() {
    fill(second);
    ui::drain();
    focus(combo);
  }

  static Widget arrowOf(const zComboBoxBase& of) { return part(of.holder(), "ArrowButton"); }
  static Widget listOf(const zComboBoxBase& of) { return part(of.holder(), "ScrolledList"); }
  static bool isShown(const zComboBoxBase& of) {
    const bool isViewable = ui::isViewable(listOf(of));
    EXPECT_EQ(of.isDropDownShown(), isViewable);
    EXPECT_EQ(openCombo == &of, isViewable);
    return isViewable;
  }

  zComboBoxStatic second{frame.get(), place(200), kStaticStyle, kId};
};

TEST_F(DropDown, TheArrowShowsAndHidesItBelowTheEntry) {
  ui::click(arrowOf(combo));
  ASSERT_TRUE(isShown(combo));
  EXPECT_THAT(codes(), ElementsAre(kComboShown));
  const ui::ScreenArea entry = ui::areaOf(combo.widget());
  const ui::ScreenArea list = ui::areaOf(part(combo.holder(), "zAppComboShell"));
  EXPECT_EQ(list,
            (ui::ScreenArea{entry.x, entry.y + entry.height, kWidth, kHeight - entry.height}));
  EXPECT_TRUE(ui::focusIs(combo.widget())) << "the list takes no focus";
  ui::click(arrowOf(combo));
  EXPECT_FALSE(isShown(combo));
  EXPECT_THAT(codes(), ElementsAre(kComboHidden));
}

TEST_F(DropDown, ARowChosenByTheMouseGoesToTheEntryAndTheFocusStays) {
  ui::click(arrowOf(combo));
  clickRow(listOf(combo), 2);
  EXPECT_FALSE(isShown(combo));
  EXPECT_EQ(combo.text().str(), "gamma");
  EXPECT_EQ(combo.curSel(), 2);
  EXPECT_THAT(codes(), ElementsAre(kComboShown, kComboHidden, kComboSelectionChanged));
  EXPECT_TRUE(ui::focusIs(combo.widget()));
  ui::typeText("x");
  EXPECT_EQ(combo.text().str(), "x") << "the chosen text was selected";
}

TEST_F(DropDown, AltDownShowsAndHidesItAndMovesNothing) {
  ui::pressKey(XK_Down, ui::kAlt);
  EXPECT_TRUE(isShown(combo));
  EXPECT_EQ(combo.curSel(), -1);
  ui::pressKey(XK_Down);
  EXPECT_TRUE(isRowSelected(listOf(combo), 0)) << "keys go on working while it is shown";
  EXPECT_TRUE(isShown(combo));
  ui::pressKey(XK_Down, ui::kAlt);
  EXPECT_FALSE(isShown(combo));
  EXPECT_THAT(codes(), ElementsAre(kComboShown, kComboSelectionChanged, kComboHidden));
}

TEST_F(DropDown, ScrollingItByMouseKeepsItOpen) {
  for (int row = 0; row < 50; ++row) {
    combo.add("more");
  }
  ui::click(arrowOf(combo));
  Widget bar = part(combo.holder(), "VertScrollBar");
  const ui::ScreenArea area = ui::areaOf(bar);
  ui::click(bar, area.width / 2, area.height - 5);
  EXPECT_TRUE(isShown(combo)) << "after a click on the scroll bar";
  ui::wheel(listOf(combo), 10, 10, -2);
  EXPECT_TRUE(isShown(combo));
  EXPECT_FALSE(isRowInView(listOf(combo), 0));
  EXPECT_TRUE(ui::focusIs(combo.widget()));
}

TEST_F(DropDown, AClickOnAFixedEntryShowsAndHidesItAsItsArrowDoesAndTakesTheFocus) {
  ui::click(second.widget());
  EXPECT_TRUE(isShown(second));
  ui::click(second.widget());
  EXPECT_FALSE(isShown(second));
  focus(combo);
  ui::click(arrowOf(second));
  EXPECT_TRUE(isShown(second));
  EXPECT_TRUE(ui::focusIs(second.widget()));
}

TEST_F(DropDown, OpeningASecondOneHidesTheFirst) {
  combo.showDropDown();
  codes();
  second.showDropDown();
  ui::drain();
  EXPECT_FALSE(isShown(combo));
  EXPECT_TRUE(isShown(second));
  EXPECT_THAT(codes(), ElementsAre(kComboHidden, kComboShown));
  combo.hideDropDown();
  EXPECT_TRUE(isShown(second)) << "hiding a hidden one changes nothing";
  EXPECT_THAT(codes(), IsEmpty());
}

/// Shows a list when that of another combo box is hidden.
struct Opener : zEvH {
  int onHidden(zEvent* /*event*/) {
    opened->showDropDown();
    return 0;
  }
  zComboBoxBase* opened = nullptr;
};

TEST_F(DropDown, TheOneShownByTheHidingOfAnotherStaysAndIsKnown) {
  Opener opener;
  opener.opened = &second;
  combo.setNotify(&opener, toHandler(&Opener::onHidden), kComboHidden);
  combo.showDropDown();
  closeOpenDropDown();
  ui::drain();
  EXPECT_TRUE(isShown(second));

  zComboBoxStatic third(frame.get(), place(100), kStaticStyle, kId);
  combo.showDropDown();
  third.showDropDown();
  ui::drain();
  EXPECT_TRUE(isShown(second));
  EXPECT_FALSE(isShown(third));
}

TEST_F(DropDown, AClickAnywhereElseInTheProgramHidesItAndDoesItsWork) {
  combo.showDropDown();
  ui::click(frame->widget(), 350, 280);
  EXPECT_FALSE(isShown(combo)) << "a place that takes no focus";
  combo.showDropDown();
  ui::click(second.widget());
  EXPECT_FALSE(isShown(combo));
  EXPECT_TRUE(isShown(second));
}

TEST_F(DropDown, IsHiddenByWhatLeavesItsComboBoxOrMovesIt) {
  const std::pair<const char*, std::function<void()>> ways[] = {
      {"Escape, which goes no further", [] { ui::pressKey(XK_Escape); }},
      {"Return, which goes no further", [] { ui::pressKey(XK_Return); }},
      {"the end of a dialog", [] { closeOpenDropDown(); }},
      {"a move", [&] { combo.moveResize(20, 10, kWidth, kHeight); }},
      {"disabling", [&] { combo.disable(); }},
      {"hiding", [&] { combo.show(kShowHide); }},
      {"a move of the window",
       [&] {
         frame->moveResize(150, 160, 400, 300);
         ui::waitFor([&] { return !combo.isDropDownShown(); }, "the list to close");
       }},
      {"the focus elsewhere",
       [&] {
         second.setFocus();
         ui::waitForFocus(second.widget());
       }},
  };
  for (const auto& [way, take] : ways) {
    SCOPED_TRACE(way);
    combo.enable();
    combo.show(kShowNormal);
    focus(combo);
    combo.showDropDown();
    ui::drain();
    EXPECT_TRUE(isShown(combo));
    take();
    EXPECT_FALSE(isShown(combo));
    EXPECT_THAT(codes(), ElementsAre(kComboShown, kComboHidden));
  }
  combo.showDropDown();
  combo.moveResize(20, 10, kWidth, kHeight);
  EXPECT_TRUE(combo.isDropDownShown()) << "a layout that changes nothing";
}

TEST_F(DropDown, GoesAboveTheEntryAtTheLowerEdgeOfTheScreen) {
  frame->moveResize(60, theScreen().screenHeight - 120, 400, 110);
  ui::waitFor(
      [&] {
        zRect known;
        combo.getExterior(known);
        const int top = ui::areaOf(combo.holder()).y;
        return top > theScreen().screenHeight - 150 && known.top == top;
      },
      "the window at the lower edge, and told of it");
  ui::drain();
  combo.showDropDown();
  ui::drain();
  const ui::ScreenArea list = ui::areaOf(part(combo.holder(), "zAppComboShell"));
  EXPECT_EQ(list.y + list.height, ui::areaOf(combo.widget()).y);
}

TEST_F(DropDown, OpensAtItsFirstRowWhenNoneIsChosen) {
  combo.setCurSel(3);
  for (int i = 0; i < 30; ++i) {
    combo.insert("newer", 0);
  }
  combo.setCurSel(-1);
  combo.showDropDown();
  ui::drain();
  EXPECT_TRUE(isRowInView(part(combo.holder(), "ScrolledList"), 0));
}

TEST_F(DropDown, DiesWithItsComboBox) {
  auto third =
      std::make_unique<zComboBoxFull>(frame.get(), new zSizer(230, 10, 100, 100), kFullStyle, kId);
  ui::drain();
  third->showDropDown();
  ui::drain();
  Window list = ui::windowOf(part(third->holder(), "zAppComboShell"));
  EXPECT_TRUE(ui::isViewable(list));
  third.reset();
  EXPECT_EQ(openCombo, nullptr);
  ui::waitFor([&] { return !ui::isViewable(list); }, "the list to disappear");
  ui::click(frame->widget(), 350, 280);
  combo.showDropDown();
  EXPECT_TRUE(isShown(combo));
}

}  // namespace
