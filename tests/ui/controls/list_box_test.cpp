// List boxes: rows, selection, notifications.

#include "framework/controls/list_box.h"

#include "tests/ui/controls/control_fixture.h"

namespace {

class ListBox : public ControlTest {
 protected:
  static constexpr std::uint32_t kStyle = kStyleControlStop | kStyleBothScrolls;

  /// The row that was chosen last, the selected ones in view, and what has been told.
  std::string state(const zListBoxBase& list) {
    ui::drain();
    return std::to_string(list.selection()) + ": " + chosenIn(list.widget()) + heard();
  }
};

TEST_F(ListBox, SortsIfItsStyleSaysSoAndTheSelectionFollowsItsRow) {
  zListBox sorted(&frame, place(10, 200), kStyle | kListSorted, 1);
  zListBox byClass(&frame, place(10, 200), kStyle, 1);
  std::string rows;
  for (const char* text : {"beta", "Alpha", "alpha", "Gamma"}) {
    for (zListBoxBase* list : std::initializer_list<zListBoxBase*>{&sorted, &byClass}) {
      rows += std::to_string(list->add(text));
    }
  }
  EXPECT_EQ(rows, "00011233");
  sorted.setCurSel(1);
  for (const char* text : {"alpha", "z", "a"}) {
    sorted.add(text);
  }
  EXPECT_EQ(state(sorted), "2: alpha ");
  sorted.addAll({"zz", "b", "Alp", "B"});
  EXPECT_EQ(rowsIn(sorted.widget()) + state(sorted),
            "a Alp Alpha alpha alpha B b beta Gamma z zz 3: alpha ");
  ui::focus(sorted);
  ui::pressKey(XK_Down);
  EXPECT_EQ(state(sorted), "4: alpha 1:1 ");
  sorted.clear();
  EXPECT_EQ(rowsIn(sorted.widget()) + state(sorted), "-1: ");
}

TEST_F(ListBox, ShowsALineOfEveryTextAndGivesItBackAsItWas) {
  const std::vector<RWCString> texts = {"two\nlines", "byte \xE4", std::string(1001, 'x'), ""};
  zListBoxUnsorted list(&frame, place(), kStyle, 1);
  list.addAll(texts);
  EXPECT_EQ(rowsIn(list.widget()), "two byte \xE4 " + std::string(1000, 'x') + "...  ");
  RWCString text;
  for (int row = 0; row < 4; ++row) {
    EXPECT_EQ(list.itemText(text, row), 1);
    EXPECT_EQ(text, texts[static_cast<std::size_t>(row)]);
  }
  EXPECT_EQ(list.itemText(text, 4), 0);
  EXPECT_EQ(text, RWCString(""));
}

TEST_F(ListBox, TellsWhatTheUserDoesAndNotWhatTheProgramDoes) {
  zListBoxUnsorted list(&frame, place(10, 200), kStyle, 1);
  for (int row = 0; row < 100; ++row) {
    list.add(std::to_string(row).c_str());
  }
  EXPECT_EQ(list.setCurSel(100), 0);
  EXPECT_EQ(list.setCurSel(70), 1);
  EXPECT_EQ(state(list), "70: 70 ");
  EXPECT_EQ(list.setCurSel(-1), 1);
  EXPECT_EQ(state(list), "70: ") << "what was chosen last stays";
  RWCString bound;
  list.setBoundString(&bound);
  EXPECT_EQ(list.storeData(), 1);
  EXPECT_EQ(bound, RWCString("70"));
  bound = "3";
  EXPECT_EQ(list.showData(), 1);
  EXPECT_EQ(state(list), "3: 3 ");
  list.setCurSel(0);
  EXPECT_EQ(state(list), "0: 0 ");
  ui::doubleClickRow(list.widget(), 3);
  EXPECT_EQ(state(list), "3: 3 1:1 1:2 ");
  ui::pressKey(XK_Return);
  ui::pressKey(XK_End);
  EXPECT_EQ(state(list), "99: 99 1:2 1:1 ");
  ui::pressKey(XK_Home);
  EXPECT_EQ(state(list), "0: 0 1:1 ");
}

TEST_F(ListBox, AMultipleListExchangesAllChosenTexts) {
  zMultiList list(&frame, place(10, 200), kStyle, 1);
  list.addAll({"a", "b", "c", "d", "c"});
  std::vector<RWCString> bound = {"c", "no such row", "a", "c", "c"};
  list.setBoundList(&bound);
  EXPECT_EQ(list.showData(), 1);
  EXPECT_EQ(state(list), "-1: a c c ") << "equal texts are as many rows";
  ui::clickRow(list.widget(), 3);
  EXPECT_EQ(state(list), "3: a c d c 1:1 ");
  EXPECT_EQ(list.storeData(), 1);
  EXPECT_EQ(bound, (std::vector<RWCString>{"a", "c", "d", "c"}));
}

}  // namespace
