// Combo boxes: rows, entry, keys, notifications. The drop-down list has its own file.

#include "framework/controls/combo_box.h"

#include <memory>

#include <gmock/gmock.h>
#include <X11/keysym.h>

#include "framework/core/messages.h"
#include "tests/ui/controls/list_view.h"
#include "tests/ui/support/ui_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kId = 100;
constexpr std::uint32_t kFullStyle = 0x50310042;
constexpr std::uint32_t kSortedStyle = 0x50310142;
constexpr std::uint32_t kStaticStyle = 0x50310043;
constexpr std::uint32_t kSimpleStyle = 0x50310041;
constexpr int kWidth = 200;
constexpr int kHeight = 140;

zSizer* place() {
  return new zSizer(10, 10, kWidth, kHeight);
}

class ComboBox : public ControlTest {
 protected:
  static void fill(zComboBoxBase& combo) {
    for (const char* text : {"alpha", "beta", "gamma", "delta"}) {
      combo.add(text);
    }
  }
  std::vector<int> codes() { return takeCodes(*frame, {kComboFocusIn, kComboFocusOut}); }
};

std::vector<std::string> textsOf(const zComboBoxBase& combo) {
  std::vector<std::string> texts;
  for (int row = 0; row < combo.count(); ++row) {
    RWCString text;
    combo.itemText(text, row);
    texts.push_back(text.str());
  }
  return texts;
}

std::string entryOf(const zComboBoxBase& combo) {
  return combo.text().str();
}

TEST_F(ComboBox, IsAsHighAsItsEntryAndSharesItsWidthWithTheArrow) {
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  ui::drain();
  const ui::ScreenArea whole = ui::areaOf(combo.holder());
  const ui::ScreenArea entry = ui::areaOf(combo.widget());
  const ui::ScreenArea arrow = ui::areaOf(part(combo.holder(), "ArrowButton"));
  EXPECT_EQ(whole.width, kWidth);
  EXPECT_LT(whole.height, kHeight / 3);
  EXPECT_EQ(entry, (ui::ScreenArea{whole.x, whole.y, kWidth - 20, whole.height}));
  EXPECT_EQ(arrow, (ui::ScreenArea{whole.x + kWidth - 20, whole.y, 20, whole.height}));
  EXPECT_EQ(combo.sizer()->size(), (zDimension{kWidth, kHeight}));

  combo.moveResize(30, 40, 150, 90);
  ui::drain();
  EXPECT_EQ(ui::areaOf(combo.widget()).width, 130);
  EXPECT_EQ(ui::areaOf(combo.widget()).height, entry.height);
  EXPECT_EQ(ui::areaOf(combo.widget()).y, entry.y + 30);
}

TEST_F(ComboBox, TheFontGoesToEntryAndListAndChangesTheHeightOnly) {
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  combo.setFontSpec(zFontSpec("courier", {0, 10}), 1);
  ui::drain();
  const ui::ScreenArea small = ui::areaOf(combo.widget());
  combo.setFontSpec(zFontSpec("courier", {0, 24}), 1);
  ui::drain();
  const ui::ScreenArea entry = ui::areaOf(combo.widget());
  EXPECT_GT(entry.height, small.height);
  EXPECT_EQ(entry.width, small.width);
  EXPECT_EQ(ui::areaOf(combo.holder()).height, entry.height);
  EXPECT_EQ(ui::areaOf(combo.holder()).width, kWidth);
}

TEST_F(ComboBox, TheSimpleKindShowsItsListBelowTheEntry) {
  zComboBox combo(frame.get(), place(), kSimpleStyle, kId);
  fill(combo);
  ui::drain();
  Widget list = part(combo.holder(), "ScrolledList");
  EXPECT_TRUE(ui::isViewable(list));
  EXPECT_EQ(part(combo.holder(), "ArrowButton"), nullptr);
  EXPECT_EQ(ui::areaOf(combo.holder()).height, kHeight);
  EXPECT_GE(ui::areaOf(list).y, ui::areaOf(combo.widget()).y + ui::areaOf(combo.widget()).height);
  doubleClickRow(list, 2);
  EXPECT_EQ(entryOf(combo), "gamma");
  EXPECT_THAT(codes(), ElementsAre(kComboSelectionChanged, kComboDoubleClick));
  combo.showDropDown();
  EXPECT_THAT(codes(), IsEmpty());
  combo.disable();
  clickRow(list, 1);
  EXPECT_EQ(entryOf(combo), "gamma");
}

TEST_F(ComboBox, SetCurSelShowsTheRowAndTellsNobody) {
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  fill(combo);
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
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  fill(combo);
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
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  fill(combo);
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
  zComboBoxStatic combo(frame.get(), place(), kSortedStyle, kId);
  combo.add("b");
  EXPECT_EQ(combo.add("A"), 0);
  EXPECT_EQ(combo.add("a"), 1);
  combo.insert("z", 0);
  EXPECT_EQ(combo.add("c"), 0) << "before the first greater row, wherever that stands";
  EXPECT_THAT(textsOf(combo), ElementsAre("c", "z", "A", "a", "b"));
}

TEST_F(ComboBox, KeepsATextOfSeveralLinesWhole) {
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  combo.insert("one\ntwo", 0);
  combo.setCurSel(0);
  EXPECT_EQ(entryOf(combo), "one\ntwo");
  EXPECT_THAT(textsOf(combo), ElementsAre("one\ntwo"));
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
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
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
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
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
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  focus(combo);
  ui::typeText("xyz");
  ui::pressKey(XK_Home);
  ui::typeText("w");
  EXPECT_EQ(entryOf(combo), "wxyz");
}

/// Puts the caret elsewhere when it is told of a selection.
class CaretMover : public zEvH {
 public:
  explicit CaretMover(Widget text) : entry(text) {}
  int onNotify(zEvent* /*event*/) {
    setCaret(entry, 1);
    return 0;
  }

 private:
  Widget entry;
};

TEST_F(ComboBox, TheCaretIsAtTheEndOnceTheKeyHasBeenHandled) {
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  fill(combo);
  CaretMover mover(combo.widget());
  combo.setNotify(&mover, toHandler(&CaretMover::onNotify), kComboSelectionChanged);
  focus(combo);
  ui::pressKey(XK_Down);
  ui::waitFor([&] { return caretPosition(combo.widget()) == 5; }, "the caret at the end");
  EXPECT_EQ(selectedText(combo.widget()), "alpha");
}

TEST_F(ComboBox, TypingReplacesTheShownRowAndDeselectsIt) {
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  fill(combo);
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

TEST_F(ComboBox, AFixedEntryTakesNoTextButGoesToTheRowOfALetter) {
  zComboBoxStatic combo(frame.get(), place(), kStaticStyle, kId);
  for (const char* text : {"beta", "Alpha", "apple"}) {
    combo.add(text);
  }
  focus(combo);
  ui::typeText("a");
  EXPECT_EQ(entryOf(combo), "Alpha");
  EXPECT_THAT(codes(), ElementsAre(kComboSelectionChanged));
  ui::typeText("a");
  EXPECT_EQ(entryOf(combo), "apple");
  ui::typeText("A");
  EXPECT_EQ(entryOf(combo), "Alpha");
  ui::typeText("x ");
  EXPECT_EQ(entryOf(combo), "Alpha");
}

TEST_F(ComboBox, TellsOfTheFocus) {
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  zComboBoxFull other(frame.get(), new zSizer(10, 100, kWidth, kHeight), kFullStyle, kId + 1);
  focus(other);
  combo.setFocus();
  ui::waitForFocus(combo.widget());
  EXPECT_THAT(takeCodes(*frame), ElementsAre(kComboFocusOut, kComboFocusIn));
}

/// A combo box with a key handler of its own, as a command line has it.
class KeyTaker : public zComboBoxFull {
 public:
  explicit KeyTaker(zWindow* parent) : zComboBoxFull(parent, place(), kFullStyle, kId) {
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
  KeyTaker combo(frame.get());
  fill(combo);
  ui::moveTo(frame->widget(), 300, 280);
  focus(combo);
  combo.seen.clear();
  ui::typeText("a\n");
  ui::pressKey(XK_Page_Up);
  ui::pressKey(XK_Page_Down);
  ui::pressKey(XK_Control_L);
  EXPECT_THAT(combo.seen, ElementsAre('a', 13, 0xFF55, 0xFF56, 0xFFE3));
  EXPECT_EQ(combo.curSel(), 3) << "Page Down, which nobody took";

  combo.taken = 0xFF54;
  combo.setCurSel(0);
  ui::pressKey(XK_Down);
  EXPECT_EQ(combo.curSel(), 0) << "taken by the handler";
  combo.taken = 'z';
  ui::typeText("z");
  EXPECT_EQ(entryOf(combo), "alpha") << "kept from the entry as well";
}

TEST_F(ComboBox, ThePointersWayInAndOutReachesTheGenericHook) {
  KeyTaker combo(frame.get());
  ui::drain();
  ui::moveTo(frame->widget(), 300, 280);
  combo.seen.clear();
  ui::moveTo(combo.widget(), 10, 10);
  ui::moveTo(frame->widget(), 300, 280);
  EXPECT_THAT(combo.seen, ElementsAre(0, 0));
}

TEST_F(ComboBox, ADisabledOneTakesNoInputAndIsStillSetByTheProgram) {
  zComboBoxFull combo(frame.get(), place(), kFullStyle, kId);
  fill(combo);
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

/// Deletes the combo box in the middle of its notification.
class Deleter : public zEvH {
 public:
  explicit Deleter(std::unique_ptr<zComboBoxFull>& victim) : combo(victim) {}
  int onNotify(zEvent* /*event*/) {
    combo.reset();
    return 1;
  }

 private:
  std::unique_ptr<zComboBoxFull>& combo;
};

TEST_F(ComboBox, MayBeDeletedByAnyNotification) {
  std::unique_ptr<zComboBoxFull> combo;
  Deleter deleter(combo);
  for (const int code : {kComboSelectionChanged, kComboFocusOut, kComboFocusIn, kComboEditChanged,
                         kComboEditUpdate, kComboShown, kComboHidden}) {
    SCOPED_TRACE("code " + std::to_string(code));
    zComboBoxFull other(frame.get(), new zSizer(10, 150, kWidth, kHeight), kFullStyle, kId);
    combo = std::make_unique<zComboBoxFull>(frame.get(), place(), kFullStyle, kId + 1 + code);
    fill(*combo);
    focus(other);
    combo->setNotify(&deleter, toHandler(&Deleter::onNotify), code);
    Widget widget = combo->widget();
    combo->setFocus();
    ui::waitFor([&] { return combo == nullptr || ui::focusIs(widget); }, "the focus");
    if (combo != nullptr) {
      ui::typeText("x");
    }
    if (combo != nullptr) {
      ui::click(part(combo->holder(), "ArrowButton"));
    }
    if (combo != nullptr) {
      clickRow(part(combo->holder(), "ScrolledList"), 1);
    }
    if (combo != nullptr) {
      ui::click(other.widget());
    }
    EXPECT_EQ(combo, nullptr);
    EXPECT_EQ(openCombo, nullptr);
    ui::drain();
  }
}

}  // namespace
