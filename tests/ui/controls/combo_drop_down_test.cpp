// The drop-down list of combo boxes: how it opens, where it goes, what closes it.

#include <functional>

#include "framework/draw/screen.h"
#include "tests/ui/controls/combo_fixture.h"

#include <X11/keysym.h>

namespace {

using testing::ElementsAre;

class DropDown : public ComboTest {
 protected:
  DropDown() {
    fill(second);
    ui::drain();
    focus(combo);
  }

  static Widget shellOf(const zComboBoxBase& of) { return ui::part(of.holder(), "zAppComboShell"); }
  /// Which lists are on the screen: "1", "2", or "" for none.
  std::string shown() {
    ui::drain();
    std::string which;
    for (zComboBoxBase* box :
         {static_cast<zComboBoxBase*>(&combo), static_cast<zComboBoxBase*>(&second)}) {
      const bool isSeen = ui::isViewable(listOf(*box));
      EXPECT_EQ(box->isDropDownShown(), isSeen);
      EXPECT_EQ(openCombo == box, isSeen);
      which += isSeen ? (box == &combo ? "1" : "2") : "";
    }
    return which;
  }

  zComboBoxStatic second{frame.get(), place(200), kStaticStyle, kId};
};

TEST_F(DropDown, TheArrowShowsItBelowTheEntryAndAChosenRowGoesThereWithoutTheFocus) {
  ui::click(arrowOf(combo));
  EXPECT_EQ(shown(), "1");
  const ui::ScreenArea entry = ui::areaOf(combo.widget());
  EXPECT_EQ(ui::areaOf(shellOf(combo)),
            (ui::ScreenArea{entry.x, entry.y + entry.height, kWidth, kHeight - entry.height}));
  EXPECT_EQ(ui::areaOf(ui::part(shellOf(combo), "ScrolledListSW")), ui::areaOf(shellOf(combo)));
  EXPECT_EQ(ui::look(listOf(combo)), "| alpha\n| beta\n| gamma\n| delta\n");
  EXPECT_TRUE(ui::focusIs(combo.widget()));
  ui::click(arrowOf(combo));
  EXPECT_EQ(shown() + state(combo), "-1 ^ 7 8");
  ui::click(arrowOf(combo));
  ui::clickRow(listOf(combo), 2);
  EXPECT_EQ(shown() + state(combo), "2 [gamma]^ 7 8 1");
  EXPECT_TRUE(ui::focusIs(combo.widget()));
  ui::typeText("x");
  EXPECT_EQ(state(combo), "-1 x^ 6 5 1");
}

TEST_F(DropDown, KeysShowItMoveInItAndHideIt) {
  const std::tuple<ui::KeySymbol, unsigned, const char*, const char*> steps[] = {
      {XK_Down, ui::kAlt, "1", "-1 ^ 7"},      {XK_Down, 0, "1", "0 [alpha]^ 1"},
      {XK_Down, ui::kAlt, "", "0 [alpha]^ 8"}, {XK_Down, ui::kAlt, "1", "0 [alpha]^ 7"},
      {XK_Return, 0, "", "0 [alpha]^ 8"},      {XK_Down, ui::kAlt, "1", "0 [alpha]^ 7"},
      {XK_Escape, 0, "", "0 [alpha]^ 8"}};
  for (const auto& [key, modifiers, isShown, expected] : steps) {
    ui::pressKey(key, modifiers);
    EXPECT_EQ(shown(), isShown);
    EXPECT_EQ(state(combo), expected);
  }
}

TEST_F(DropDown, OpensAtItsRowOrItsFirstAndScrollingItByMouseKeepsItOpen) {
  combo.addAll(std::vector<RWCString>(50, "more"));
  combo.setCurSel(25);
  combo.showDropDown();
  EXPECT_TRUE(isRowInView(listOf(combo), 25));
  combo.hideDropDown();
  combo.setCurSel(-1);
  combo.showDropDown();
  EXPECT_TRUE(isRowInView(listOf(combo), 0));
  told();
  Widget bar = ui::part(combo.holder(), "VertScrollBar");
  ui::click(bar, ui::areaOf(bar).width / 2, ui::areaOf(bar).height - 5);
  ui::wheel(listOf(combo), 10, 10, -2);
  EXPECT_EQ(shown(), "1");
  EXPECT_FALSE(isRowInView(listOf(combo), 0));
  EXPECT_TRUE(ui::focusIs(combo.widget()));
  EXPECT_EQ(told(), Told{}) << "the grab of the bar is no change of the focus";
}

TEST_F(DropDown, OneIsShownAtATimeAndAClickElsewhereDoesItsWork) {
  const std::function<void()> showFirst = [&] { combo.showDropDown(); };
  const std::function<void()> clickSecond = [&] { ui::click(second.widget()); };
  const std::tuple<const char*, std::function<void()>, const char*, std::vector<int>> steps[] = {
      {"a fixed entry", clickSecond, "2", {7}},
      {"again", clickSecond, "", {8}},
      {"another button", [&] { ui::click(second.widget(), ui::kRightButton); }, "", {}},
      {"shown", showFirst, "1", {7}},
      {"shown again", showFirst, "1", {}},
      {"the other's arrow", [&] { ui::click(arrowOf(second)); }, "2", {8, 7}},
      {"the first", showFirst, "1", {8, 7}},
      {"hiding a hidden one", [&] { second.hideDropDown(); }, "1", {}},
      {"a place without a focus", [&] { ui::click(frame->widget(), 350, 280); }, "", {8}},
  };
  for (const auto& [name, act, isShown, expected] : steps) {
    act();
    EXPECT_EQ(shown(), isShown) << name;
    EXPECT_EQ(codes(), expected) << name;
  }
  EXPECT_TRUE(ui::focusIs(second.widget())) << "its arrow took the focus";
}

TEST_F(DropDown, TheOneShownByTheHidingOfAnotherStaysAndIsKnown) {
  const auto showSecondOnHiding = [&] { listener.action = [&] { second.showDropDown(); }; };
  combo.setNotify(&listener, Listener::handler(), kComboHidden);
  showSecondOnHiding();
  combo.showDropDown();
  closeOpenDropDown();
  EXPECT_EQ(shown(), "2");
  zComboBoxStatic third(frame.get(), place(100), kStaticStyle, kId);
  combo.showDropDown();
  showSecondOnHiding();
  third.showDropDown();
  EXPECT_EQ(shown(), "2");
  EXPECT_FALSE(third.isDropDownShown());
}

TEST_F(DropDown, IsHiddenByWhatLeavesItsComboBoxOrMovesIt) {
  const std::pair<const char*, std::function<void()>> ways[] = {
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
    combo.enable();
    combo.show(kShowNormal);
    focus(combo);
    combo.showDropDown();
    EXPECT_EQ(shown(), "1") << way;
    take();
    EXPECT_EQ(shown(), "") << way;
    EXPECT_THAT(codes(), ElementsAre(kComboShown, kComboHidden)) << way;
  }
  combo.showDropDown();
  combo.moveResize(20, 10, kWidth, kHeight);
  EXPECT_EQ(shown(), "1") << "a layout that changes nothing";
}

TEST_F(DropDown, GoesAboveTheEntryAtTheLowerEdgeOfTheScreen) {
  frame->moveResize(60, theScreen().screenHeight - 120, 400, 110);
  const auto isThere = [&] {
    zRect known;
    combo.getExterior(known);
    return known.top > theScreen().screenHeight - 150 && known.top == ui::areaOf(combo.holder()).y;
  };
  ui::waitFor(isThere, "the window at the lower edge, and told of it");
  ui::drain();
  combo.showDropDown();
  ui::drain();
  const ui::ScreenArea list = ui::areaOf(shellOf(combo));
  EXPECT_EQ(list.y + list.height, ui::areaOf(combo.widget()).y);
}

TEST_F(DropDown, DiesWithItsComboBox) {
  auto third =
      std::make_unique<zComboBoxFull>(frame.get(), new zSizer(230, 10, 100, 100), kFullStyle, kId);
  ui::drain();
  third->showDropDown();
  ui::drain();
  Window list = ui::windowOf(shellOf(*third));
  EXPECT_TRUE(ui::isViewable(list));
  third.reset();
  EXPECT_EQ(openCombo, nullptr);
  ui::waitFor([&] { return !ui::isViewable(list); }, "the list to disappear");
  ui::click(frame->widget(), 350, 280);
  combo.showDropDown();
  EXPECT_EQ(shown(), "1");
}

}  // namespace
