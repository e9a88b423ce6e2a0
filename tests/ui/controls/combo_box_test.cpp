// Combo boxes: rows, entry, keys, notifications. The drop-down list has its own file.

#include <functional>

#include <gmock/gmock.h>
#include <X11/keysym.h>

#include "framework/controls/edit.h"
#include "framework/core/event.h"
#include "tests/ui/controls/combo_fixture.h"
#include "tests/ui/support/ui_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t kSortedStyle = 0x50310142;
constexpr std::uint32_t kSimpleStyle = 0x50310041;

using ComboBox = ComboTest;

std::string entryOf(const zComboBoxBase& combo) {
  return combo.text().str();
}

TEST_F(ComboBox, IsAsHighAsItsEntryAndSharesItsWidthWithTheArrow) {
  ui::drain();
  const ui::ScreenArea whole = ui::areaOf(combo.holder());
  const ui::ScreenArea entry = ui::areaOf(combo.widget());
  const ui::ScreenArea arrow = ui::areaOf(part(combo.holder(), "ArrowButton"));
  EXPECT_EQ(whole.width, kWidth);
  EXPECT_LT(whole.height, kHeight / 3);
  EXPECT_EQ(entry, (ui::ScreenArea{whole.x - 1, whole.y, kWidth - 19, whole.height}))
      << "a column is cut off on purpose";
  EXPECT_EQ(arrow, (ui::ScreenArea{whole.x + kWidth - 20, whole.y, 20, whole.height}));
  EXPECT_EQ(combo.sizer()->size(), (zDimension{kWidth, kHeight}));

  combo.moveResize(30, 40, 150, 90);
  combo.setFontSpec(zFontSpec("courier", {0, 24}), 1);
  ui::drain();
  const ui::ScreenArea moved = ui::areaOf(combo.widget());
  EXPECT_EQ(moved.width, 131);
  EXPECT_EQ(moved.y, entry.y + 30);
  EXPECT_GT(moved.height, entry.height) << "the font sets the height alone";
  EXPECT_EQ(ui::areaOf(combo.holder()).height, moved.height);
}

TEST_F(ComboBox, TheSimpleKindShowsItsListBelowTheEntry) {
  zComboBox simple(frame.get(), place(), kSimpleStyle, kId);
  fill(simple);
  ui::drain();
  Widget list = part(simple.holder(), "ScrolledList");
  EXPECT_TRUE(ui::isViewable(list));
  EXPECT_EQ(part(simple.holder(), "ArrowButton"), nullptr);
  EXPECT_EQ(ui::areaOf(simple.holder()).height, kHeight);
  EXPECT_GE(ui::areaOf(list).y, ui::areaOf(simple.widget()).y + ui::areaOf(simple.widget()).height);
  doubleClickRow(list, 2);
  EXPECT_EQ(entryOf(simple), "gamma");
  EXPECT_THAT(codes(), ElementsAre(kComboSelectionChanged, kComboDoubleClick));
  simple.showDropDown();
  EXPECT_THAT(codes(), IsEmpty());
  simple.disable();
  clickRow(list, 1);
  EXPECT_EQ(entryOf(simple), "gamma");
}

TEST_F(ComboBox, SetCurSelShowsTheRowAndTellsNobody) {
  zComboBoxFull focused(frame.get(), place(200), kFullStyle, kId + 1);
  focused.show();
  ui::click(focused.widget());
  codes();
  EXPECT_EQ(combo.curSel(), -1);
  EXPECT_EQ(combo.setCurSel(2), 2);
  EXPECT_EQ(combo.curSel(), 2);
  EXPECT_EQ(entryOf(combo), "gamma");
  EXPECT_EQ(caretPosition(combo.widget()), 5);
  EXPECT_EQ(selectedText(combo.widget()), "") << "only an entry with the focus is selected";
  EXPECT_EQ(combo.setCurSel(4), -1);
  EXPECT_EQ(combo.setCurSel(-2), -1);
  EXPECT_EQ(combo.curSel(), 2);
  EXPECT_EQ(combo.setCurSel(-1), -1);
  EXPECT_EQ(combo.curSel(), -1);
  EXPECT_EQ(entryOf(combo), "");
  EXPECT_EQ(combo.selectString("delta"), 3);
  EXPECT_EQ(combo.selectString("delt"), -1);
  EXPECT_EQ(entryOf(combo), "delta");
  EXPECT_THAT(codes(), IsEmpty());

  focus(combo);
  combo.setCurSel(1);
  EXPECT_EQ(selectedText(combo.widget()), "beta");
  EXPECT_EQ(caretPosition(combo.widget()), 4);
}

TEST_F(ComboBox, KeepsTheCurrentRowWhenAnotherIsInsertedAboveIt) {
  combo.setCurSel(1);
  combo.setText("typed since");
  EXPECT_EQ(combo.insert("new", 0), 0);
  EXPECT_EQ(combo.insert("end", -1), 5);
  EXPECT_EQ(combo.insert("beta", 2), 2) << "the same text as the current row";
  EXPECT_THAT(textsOf(combo), ElementsAre("new", "alpha", "beta", "beta", "gamma", "delta", "end"));
  EXPECT_EQ(combo.curSel(), 3);
  EXPECT_EQ(entryOf(combo), "typed since");
  focus(combo);
  ui::pressKey(XK_Down);
  EXPECT_EQ(combo.curSel(), 4);
}

TEST_F(ComboBox, RemovingSelectsTheSuccessorOrTheNewLastRow) {
  EXPECT_EQ(combo.remove(1), 1);
  EXPECT_EQ(combo.curSel(), 1);
  EXPECT_EQ(entryOf(combo), "gamma");
  combo.remove(2);
  EXPECT_EQ(combo.curSel(), 1);
  EXPECT_EQ(entryOf(combo), "gamma");
  combo.remove(1);
  combo.remove(0);
  EXPECT_EQ(combo.curSel(), -1);
  EXPECT_EQ(entryOf(combo), "");
  EXPECT_EQ(combo.remove(0), 0);
  EXPECT_THAT(codes(), IsEmpty());
}

TEST_F(ComboBox, SortsByStyleAndStillWhenRowsWereInserted) {
  zComboBoxStatic sorted(frame.get(), place(), kSortedStyle, kId);
  sorted.add("b");
  EXPECT_EQ(sorted.add("A"), 0);
  EXPECT_EQ(sorted.add("a"), 1);
  sorted.insert("z", 0);
  EXPECT_EQ(sorted.add("c"), 0) << "before the first greater row, wherever that stands";
  EXPECT_THAT(textsOf(sorted), ElementsAre("c", "z", "A", "a", "b"));
}

struct KeyCase {
  const char* situation;
  int before;
  ui::KeySymbol key;
  unsigned modifiers;
  int after;
};

constexpr KeyCase kKeyCases[] = {
    {"nothing selected", -1, XK_Down, ui::kNoModifier, 0},
    {"nothing selected", -1, XK_Up, ui::kNoModifier, -1},
    {"nothing selected", -1, XK_Home, ui::kNoModifier, 0},
    {"in between", 10, XK_Down, ui::kNoModifier, 11},
    {"in between", 10, XK_Up, ui::kNoModifier, 9},
    {"in between", 10, XK_End, ui::kNoModifier, 29},
    {"in between", 10, XK_Home, ui::kNoModifier, 0},
    {"first", 0, XK_Up, ui::kNoModifier, 0},
    {"last", 29, XK_Down, ui::kNoModifier, 29},
    {"near the end", 28, XK_Page_Down, ui::kNoModifier, 29},
    {"near the start", 1, XK_Page_Up, ui::kNoModifier, 0},
    {"with Shift", 10, XK_Home, ui::kShift, 10},
    {"with Control", 10, XK_Down, ui::kControl, 10},
};

TEST_F(ComboBox, KeysMoveInTheList) {
  while (combo.remove(0) != 0) {
  }
  for (int row = 0; row < 30; ++row) {
    combo.add(("row " + std::to_string(row)).c_str());
  }
  focus(combo);
  for (const KeyCase& test : kKeyCases) {
    SCOPED_TRACE(std::string(test.situation) + ", key " + std::to_string(test.key));
    combo.setCurSel(test.before);
    ui::pressKey(test.key, test.modifiers);
    EXPECT_EQ(combo.curSel(), test.after);
    EXPECT_EQ(codes().size(), test.before == test.after ? 0U : 1U);
    if (test.after >= 0 && test.before != test.after) {
      EXPECT_EQ(entryOf(combo), "row " + std::to_string(test.after));
      EXPECT_EQ(selectedText(combo.widget()), entryOf(combo));
    }
  }
}

TEST_F(ComboBox, PageKeysMoveByWhatTheListShows) {
  while (combo.remove(0) != 0) {
  }
  for (int row = 0; row < 30; ++row) {
    combo.add(("row " + std::to_string(row)).c_str());
  }
  focus(combo);
  combo.setCurSel(0);
  combo.showDropDown();
  ui::pressKey(XK_Page_Down);
  const int page = combo.curSel();
  EXPECT_GT(page, 2);
  EXPECT_LT(page, 20);
  Widget list = part(combo.holder(), "ScrolledList");
  EXPECT_TRUE(isRowInView(list, page));
  ui::pressKey(XK_Page_Down);
  EXPECT_EQ(combo.curSel(), 2 * page);
  EXPECT_TRUE(isRowInView(list, 2 * page));
  ui::pressKey(XK_Page_Up);
  EXPECT_EQ(combo.curSel(), page);
}

TEST_F(ComboBox, HomeMovesTheCaretWhereItMovesInNoList) {
  while (combo.remove(0) != 0) {
  }
  focus(combo);
  ui::typeText("xyz");
  ui::pressKey(XK_Home);
  ui::typeText("w");
  EXPECT_EQ(entryOf(combo), "wxyz");
}

TEST_F(ComboBox, TypingReplacesTheShownRowAndDeselectsIt) {
  focus(combo);
  combo.setCurSel(1);
  ui::typeText("x");
  EXPECT_EQ(entryOf(combo), "x");
  EXPECT_EQ(combo.curSel(), -1);
  EXPECT_THAT(codes(), ElementsAre(kComboEditUpdate, kComboEditChanged, kComboSelectionChanged));
  ui::typeText("y");
  EXPECT_EQ(entryOf(combo), "xy");
  EXPECT_THAT(codes(), ElementsAre(kComboEditUpdate, kComboEditChanged));
  ui::pressKey(XK_Down);
  EXPECT_EQ(combo.curSel(), 0);
}

TEST_F(ComboBox, TheEntryIsOneLineAndTakesNoControlCharacters) {
  const std::string longText = std::string(40000, 'x') + "\nend\n";
  combo.insert(longText.c_str(), 0);
  combo.setCurSel(0);
  EXPECT_EQ(entryOf(combo), std::string(40000, 'x') + " end");
  RWCString row;
  combo.itemText(row, 0);
  EXPECT_EQ(row, longText);

  auto* source = new zEditBox(frame.get(), new zSizer(10, 200, 200, 60), 0x50010004, "a\nb\n", 1);
  focus(combo);
  combo.setText("");
  source->setSelection(0, 4);
  ui::click(combo.widget(), ui::kMiddleButton);
  ui::waitFor([&] { return !entryOf(combo).empty(); }, "the pasted text");
  ui::pressKey('a', ui::kControl);
  ui::pressKey(XK_Clear);
  ui::pressKey('x', ui::kAlt);
  ui::typeText("y");
  EXPECT_EQ(entryOf(combo), "a by");
}

TEST_F(ComboBox, AFixedEntryTakesNoTextButGoesToTheRowOfALetter) {
  zComboBoxStatic fixed(frame.get(), place(), kStaticStyle, kId);
  for (const char* text : {"beta", "Alpha", "apple"}) {
    fixed.add(text);
  }
  focus(fixed);
  ui::typeText("a");
  EXPECT_EQ(entryOf(fixed), "Alpha");
  EXPECT_THAT(codes(), ElementsAre(kComboSelectionChanged));
  ui::typeText("a");
  EXPECT_EQ(entryOf(fixed), "apple");
  ui::typeText("A");
  EXPECT_EQ(entryOf(fixed), "Alpha");
  ui::typeText("x ");
  EXPECT_EQ(entryOf(fixed), "Alpha");
}

/// A fixed box with a key handler of its own, as a command line has it.
class KeyTaker : public zComboBoxFull {
 public:
  KeyTaker(zWindow* parent, zSizer* place) : zComboBoxFull(parent, place, 0x50310042, 101) {
    addPlainHandler(this, &zEvH::handle, kMsgKeyDown);
  }
  int handle(zEvent* event) override {
    seen.push_back(event->message == kMsgKeyDown ? event->wparam : -event->message);
    return event->message == kMsgKeyDown && event->wparam == taken ? 1 : 0;
  }

  std::vector<std::intptr_t> seen;
  std::intptr_t taken = 0;
};

TEST_F(ComboBox, AHandlerSeesEveryKeyFirstAndKeepsWhatItTakes) {
  KeyTaker taker(frame.get(), place(150));
  fill(taker);
  ui::moveTo(frame->widget(), 300, 280);
  focus(taker);
  taker.seen.clear();
  ui::typeText("a\n");
  ui::pressKey(XK_Page_Up);
  ui::pressKey(XK_Page_Down);
  ui::pressKey(XK_Control_L);
  EXPECT_THAT(taker.seen, ElementsAre('a', 13, 0xFF55, 0xFF56, 0xFFE3));
  EXPECT_EQ(taker.curSel(), 3) << "Page Down, which nobody took";

  taker.taken = 0xFF54;
  taker.setCurSel(0);
  ui::pressKey(XK_Down);
  EXPECT_EQ(taker.curSel(), 0) << "taken by the handler";
  taker.taken = 'z';
  ui::typeText("z");
  EXPECT_EQ(entryOf(taker), "alpha") << "kept from the entry as well";
}

TEST_F(ComboBox, ADisabledOneTakesNoInputAndIsStillSetByTheProgram) {
  focus(combo);
  combo.disable();
  EXPECT_FALSE(combo.isEnabled());
  ui::typeText("x");
  ui::pressKey(XK_Down);
  ui::click(part(combo.holder(), "ArrowButton"));
  combo.showDropDown();
  EXPECT_FALSE(combo.isDropDownShown());
  EXPECT_EQ(combo.curSel(), -1);
  EXPECT_EQ(combo.setCurSel(2), 2);
  EXPECT_EQ(entryOf(combo), "gamma");
  combo.enable();
  EXPECT_TRUE(combo.isEnabled());
  const zComboBoxFull born(frame.get(), new zSizer(10, 100, kWidth, kHeight),
                           kFullStyle | kStyleDisabled, kId + 1);
  EXPECT_FALSE(born.isEnabled());
}

TEST_F(ComboBox, MayBeDeletedByAnyNotification) {
  for (const int code : {kComboSelectionChanged, kComboFocusOut, kComboFocusIn, kComboEditChanged,
                         kComboEditUpdate, kComboShown, kComboHidden}) {
    SCOPED_TRACE("code " + std::to_string(code));
    Executioner<zComboBoxFull> deleter(
        new zComboBoxFull(frame.get(), place(150), kFullStyle, kId + 1 + code));
    zComboBoxFull*& doomed = deleter.victim;
    fill(*doomed);
    focus(combo);
    doomed->setNotify(&deleter, deleter.handler(), code);
    Widget widget = doomed->widget();
    doomed->setFocus();
    ui::waitFor([&] { return doomed == nullptr || ui::focusIs(widget); }, "the focus");
    const std::function<void()> actions[] = {
        [] { ui::typeText("x"); }, [&] { ui::click(part(doomed->holder(), "ArrowButton")); },
        [&] { clickRow(part(doomed->holder(), "ScrolledList"), 1); },
        [&] { ui::click(combo.widget()); }};
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
