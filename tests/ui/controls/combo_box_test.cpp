// Combo boxes: rows, entry, keys, notifications. The drop-down list has its own file.

#include "framework/controls/edit.h"
#include "tests/ui/controls/combo_fixture.h"

#include <X11/keysym.h>

namespace {

using testing::IsEmpty;

constexpr std::uint32_t kSortedStyle = 0x50310142;
constexpr std::uint32_t kSimpleStyle = 0x50310041;

using ComboBox = ComboTest;

TEST_F(ComboBox, IsAsHighAsItsEntryAndSharesItsWidthWithTheArrow) {
  const auto places = [&] {
    ui::drain();
    return placesOf({combo.holder(), combo.widget(), arrowOf(combo)});
  };
  const auto height = [&] { return std::to_string(ui::areaOf(combo.holder()).height); };
  const std::string low = height();
  EXPECT_LT(std::stoi(low), kHeight / 3);
  EXPECT_EQ(places(), "10,10 200x" + low + "; 9,10 181x" + low + "; 190,10 20x" + low + "; ")
      << "a column of the entry is cut off on purpose";
  EXPECT_EQ(combo.sizer()->size(), (zDimension{kWidth, kHeight}));
  combo.moveResize(30, 40, 150, 90);
  combo.setFontSpec(zFontSpec("courier", {0, 24}), 1);
  const std::string high = height();
  EXPECT_GT(std::stoi(high), std::stoi(low)) << "the font sets the height alone";
  EXPECT_EQ(places(), "30,40 150x" + high + "; 29,40 131x" + high + "; 160,40 20x" + high + "; ");
  EXPECT_EQ(combo.sizer()->rect(), zRect(zPoint{30, 40}, zDimension{150, 90}));
  combo.setBackground(zColor(0x8090A0));
  EXPECT_EQ(ui::resource(arrowOf(combo), "background"), ui::resource(combo.widget(), "background"));
}

TEST_F(ComboBox, TheSimpleKindShowsItsListBelowTheEntry) {
  zComboBox simple(frame.get(), place(), kSimpleStyle, kId);
  fill(simple);
  ui::drain();
  EXPECT_EQ(arrowOf(simple), nullptr);
  EXPECT_EQ(placesOf({simple.holder()}), "10,10 200x140; ");
  const ui::ScreenArea entry = ui::areaOf(simple.widget());
  EXPECT_EQ(ui::areaOf(ui::part(simple.holder(), "ScrolledListSW")).y, entry.y + entry.height + 1);
  ui::doubleClickRow(listOf(simple), 2);
  EXPECT_EQ(state(simple), "2 gamma^ 1 2");
  simple.showDropDown();
  EXPECT_THAT(codes(), IsEmpty());
  simple.disable();
  ui::clickRow(listOf(simple), 1);
  EXPECT_EQ(state(simple), "2 gamma^");
}

TEST_F(ComboBox, WhatTheProgramChangesShowsAndIsToldNobody) {
  // An entry that gets the focus selects its text.
  zEditLine line(frame.get(), new zSizer(10, 170, 300, 40), kShownTabStop, "text", 2);
  focus(line);
  const auto set = [&](int row) { return combo.setCurSel(row); };
  const auto select = [&](const char* text) { return combo.selectString(text); };
  const auto check = [&](int result, int expected, const char* shown,
                         SourceLine where = SourceLine::current()) {
    EXPECT_EQ(result, expected) << "line " << where.line;
    EXPECT_EQ(state(combo), shown) << "line " << where.line;
  };
  check(set(2), 2, "2 gamma^");
  check(set(4), -1, "2 gamma^");
  check(set(-2), -1, "2 gamma^");
  check(set(-1), -1, "-1 ^");
  check(select("delta"), 3, "3 delta^");
  check(select("delt"), -1, "3 delta^");
  check(set(0), 0, "0 alpha^");
  check(set(1), 1, "1 beta^");
  combo.setText("typed");
  check(combo.insert("new", 0), 0, "2 typed^");
  check(combo.insert("end", -1), 5, "2 typed^");
  check(combo.insert("after", 9), 6, "2 typed^");
  check(combo.insert("beta", 2), 2, "3 typed^");
  check(combo.insert("behind", 4), 4, "3 typed^");
  check(combo.add("last"), 9, "3 typed^");
  combo.addAll({"x", "y"});
  check(combo.count(), 12, "3 typed^");
  check(combo.remove(3), 1, "3 behind^");
  check(combo.remove(8), 1, "8 x^");
  check(combo.remove(8), 1, "8 y^");
  check(combo.remove(8), 1, "7 after^");
  check(combo.remove(8), 0, "7 after^");
  EXPECT_EQ(textsOf(combo),
            (Journal{"new", "alpha", "beta", "behind", "gamma", "delta", "end", "after"}));
  clear(combo);
  RWCString text = "untouched";
  check(combo.itemText(text, 0), 0, "-1 ^");
  EXPECT_EQ(text, RWCString(""));
  combo.setText("a & b");
  combo.text(text);
  EXPECT_EQ(text, RWCString("a & b"));
}

TEST_F(ComboBox, SortsByStyleAndStillWhenRowsWereInserted) {
  zComboBoxStatic sorted(frame.get(), place(), kSortedStyle, kId);
  sorted.add("b");
  EXPECT_EQ(sorted.add("A"), 0);
  EXPECT_EQ(sorted.add("a"), 1);
  sorted.insert("z", 0);
  EXPECT_EQ(sorted.add("c"), 0) << "before the first greater row, wherever that stands";
  sorted.setCurSel(2);
  sorted.addAll({"d", "B"});
  EXPECT_EQ(textsOf(sorted), (Journal{"B", "c", "d", "z", "A", "a", "b"}));
  EXPECT_EQ(sorted.curSel(), 4);
}

TEST_F(ComboBox, KeysMoveInTheList) {
  clear(combo);
  for (int row = 0; row < 30; ++row) {
    combo.add(("row " + std::to_string(row)).c_str());
  }
  const int page = ui::resource(listOf(combo), "visibleItemCount");
  ASSERT_GT(page, 2);
  // The row before, the key with its modifiers, the row after.
  const std::tuple<int, ui::KeySymbol, unsigned, int> rows[] = {{-1, XK_Down, 0, 0},
                                                                {-1, XK_Up, 0, -1},
                                                                {-1, XK_Home, 0, 0},
                                                                {-1, XK_Page_Up, 0, -1},
                                                                {10, XK_Down, 0, 11},
                                                                {10, XK_Up, 0, 9},
                                                                {10, XK_End, 0, 29},
                                                                {10, XK_Home, 0, 0},
                                                                {1, XK_Up, 0, 0},
                                                                {0, XK_Up, 0, 0},
                                                                {0, XK_Home, 0, 0},
                                                                {29, XK_Down, 0, 29},
                                                                {29, XK_End, 0, 29},
                                                                {0, XK_Page_Down, 0, page},
                                                                {28, XK_Page_Down, 0, 29},
                                                                {29, XK_Page_Up, 0, 29 - page},
                                                                {1, XK_Page_Up, 0, 0},
                                                                {0, XK_Page_Up, 0, 0},
                                                                {10, XK_Home, ui::kShift, 10},
                                                                {10, XK_Down, ui::kControl, 10},
                                                                {10, XK_Up, ui::kAlt, 10}};
  focus(combo);
  for (const auto& [before, key, modifiers, after] : rows) {
    SCOPED_TRACE(testing::Message() << "row " << before << " key " << key);
    combo.setCurSel(before);
    codes();
    ui::pressKey(key, modifiers);
    const std::string number = std::to_string(after);
    if (before != after) {
      EXPECT_EQ(state(combo), number + " [row " + number + "]^ 1");
      EXPECT_TRUE(isRowInView(listOf(combo), after));
    } else {
      EXPECT_EQ(combo.curSel(), after);
      EXPECT_THAT(codes(), IsEmpty());
    }
  }
}

TEST_F(ComboBox, AFixedEntryTakesNoTextButGoesToTheRowOfALetter) {
  zComboBoxStatic fixed(frame.get(), place(), kStaticStyle, kId);
  fill(fixed, {"beta", "Alpha", "apple", ""});
  focus(fixed);
  const std::pair<const char*, const char*> typed[] = {
      {"a", "1 [Alpha]^ 1"}, {"a", "2 [apple]^ 1"}, {"A", "1 [Alpha]^ 1"}, {"x", "1 [Alpha]^"},
      {" ", "1 [Alpha]^"},   {"b", "0 [beta]^ 1"},  {"b", "0 [beta]^"},
  };
  for (const auto& [text, after] : typed) {
    ui::typeText(text);
    EXPECT_EQ(state(fixed), after) << text;
  }
}

TEST_F(ComboBox, WhatTheUserTypesIsToldAndDeselectsTheRow) {
  focus(combo);
  combo.setCurSel(1);
  EXPECT_EQ(state(combo), "1 [beta]^") << "the focus has it selected";
  ui::typeText("x");
  EXPECT_EQ(state(combo), "-1 x^ 6 5 1");
  ui::typeText("y");
  EXPECT_EQ(state(combo), "-1 xy^ 6 5");
  ui::pressKey('a', ui::kControl);
  ui::pressKey(XK_Clear);
  ui::pressKey('x', ui::kAlt);
  EXPECT_EQ(state(combo), "-1 xy^") << "no control characters";
  ui::pressKey(XK_Down);
  EXPECT_EQ(state(combo), "0 [alpha]^ 1");
  clear(combo);
  ui::typeText("yz");
  codes();
  ui::pressKey(XK_Home);
  ui::typeText("x");
  EXPECT_EQ(state(combo), "-1 x^yz 6 5") << "the caret moves where no list does";
}

TEST_F(ComboBox, TheEntryIsOneLineWhateverItsText) {
  const std::string longText = std::string(40000, 'x') + "\nend\n";
  combo.insert(longText.c_str(), 0);
  combo.setCurSel(0);
  EXPECT_EQ(ui::textOf(combo.widget()), std::string(40000, 'x') + " end");
  RWCString row;
  EXPECT_EQ(combo.itemText(row, 0), 1);
  EXPECT_EQ(row, longText);
  auto* source = new zEditBox(frame.get(), new zSizer(10, 200, 200, 60), 0x50010004, "a\nb\n", 1);
  focus(combo);
  combo.setText("");
  source->setSelection(0, 4);
  ui::click(combo.widget(), ui::kMiddleButton);
  ui::waitFor([&] { return ui::textOf(combo.widget()) == "a b"; }, "the pasted text");
}

TEST_F(ComboBox, ADisabledOneTakesNoInputAndIsStillSetByTheProgram) {
  focus(combo);
  combo.disable();
  ui::typeText("x");
  ui::pressKey(XK_Down);
  ui::click(arrowOf(combo));
  combo.showDropDown();
  EXPECT_EQ(combo.setCurSel(2), 2);
  EXPECT_EQ(ui::textOf(combo.widget()), "gamma");
  EXPECT_FALSE(combo.isEnabled() || combo.isDropDownShown());
  combo.enable();
  ui::click(arrowOf(combo));
  EXPECT_TRUE(combo.isDropDownShown());
}

TEST_F(ComboBox, MayBeDeletedByAnyNotification) {
  for (const int code : {kComboSelectionChanged, kComboFocusOut, kComboFocusIn, kComboEditChanged,
                         kComboEditUpdate, kComboShown, kComboHidden}) {
    SCOPED_TRACE(code);
    auto* doomed = new zComboBoxFull(frame.get(), place(150), kFullStyle, kId + 1 + code);
    fill(*doomed);
    focus(combo);
    doomed->setNotify(&listener, Listener::handler(), code);
    listener.action = [&] { delete std::exchange(doomed, nullptr); };
    Widget widget = doomed->widget();
    doomed->setFocus();
    ui::waitFor([&] { return doomed == nullptr || ui::focusIs(widget); }, "the focus");
    const std::function<void()> actions[] = {
        [] { ui::typeText("x"); }, [&] { ui::click(arrowOf(*doomed)); },
        [&] { ui::clickRow(listOf(*doomed), 1); }, [&] { ui::click(combo.widget()); }};
    for (const std::function<void()>& action : actions) {
      if (doomed != nullptr) {
        action();
      }
    }
    EXPECT_EQ(doomed, nullptr);
    EXPECT_EQ(openCombo, nullptr);
    ui::drain();
  }
}

}  // namespace
