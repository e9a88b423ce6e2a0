// List boxes: rows, selection, notifications.

#include "framework/controls/list_box.h"

#include <gmock/gmock.h>
#include <X11/keysym.h>

#include "tests/ui/controls/list_view.h"
#include "tests/ui/support/ui_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kId = 100;
constexpr std::uint32_t kSortedStyle = 0x50B10103;
constexpr std::uint32_t kUnsortedStyle = 0x50B10001;
constexpr std::uint32_t kMultipleStyle = 0x50B10109;
constexpr std::uint32_t kExtendedStyle = 0x50B10909;

zSizer* place(int height = 200) {
  return new zSizer(10, 10, 200, height);
}

class ListBox : public ControlTest {
 protected:
  void fill(zListBoxBase& list, int rows = 5) {
    for (int row = 0; row < rows; ++row) {
      list.add(("row " + std::to_string(row)).c_str());
    }
  }
};

TEST_F(ListBox, SortsIfStyleAndClassSaySo) {
  zListBox sorted(frame.get(), place(), kSortedStyle, kId);
  EXPECT_EQ(sorted.add("beta"), 0);
  EXPECT_EQ(sorted.add("Alpha"), 0);
  EXPECT_EQ(sorted.add("alpha"), 1);
  EXPECT_EQ(sorted.add("Gamma"), 3);
  EXPECT_THAT(textsOf(sorted), ElementsAre("Alpha", "alpha", "beta", "Gamma"));
  zListBox unsortedStyle(frame.get(), place(), kUnsortedStyle, kId);
  unsortedStyle.add("b");
  EXPECT_EQ(unsortedStyle.add("a"), 1);
  zListBoxUnsorted unsortedClass(frame.get(), place(), kSortedStyle, kId);
  unsortedClass.add("b");
  EXPECT_EQ(unsortedClass.add("a"), 1);
}

TEST_F(ListBox, GivesEveryTextBackAsItWas) {
  zListBoxUnsorted list(frame.get(), place(), kUnsortedStyle, kId);
  const std::vector<std::string> texts = {"",          "two\nlines", "a\ttab",
                                          "byte \xE4", " blanks ",   std::string(40000, 'x')};
  list.addAll({texts.begin(), texts.end()});
  ui::drain();
  EXPECT_EQ(textsOf(list), texts);
  RWCString text = "untouched";
  EXPECT_EQ(list.itemText(text, 6), 0);
  EXPECT_EQ(text, RWCString(""));
}

TEST_F(ListBox, ManyTextsAtOnceLandWhereSingleOnesDo) {
  zListBox list(frame.get(), place(), kSortedStyle, kId);
  const std::vector<RWCString> texts = {"m", "z", "C", "c"};
  list.addAll(texts);
  list.setCurSel(2);
  list.addAll({"a", "zz", "m", "d"});
  EXPECT_THAT(textsOf(list), ElementsAre("a", "C", "c", "d", "m", "m", "z", "zz"));
  EXPECT_EQ(list.selection(), 4);
  EXPECT_TRUE(isRowSelected(list.widget(), 4));
  zListBoxUnsorted asAdded(frame.get(), place(), kSortedStyle, kId);
  asAdded.addAll(texts);
  EXPECT_THAT(textsOf(asAdded), ElementsAre("m", "z", "C", "c"));
}

TEST_F(ListBox, HasTheScrollBarsOfItsStyle) {
  for (const std::uint32_t bars : {0U, 0x00200000U, 0x00100000U}) {
    zListBoxUnsorted list(frame.get(), place(), 0x50810001 | bars, kId);
    fill(list, 50);
    list.add(std::string(200, 'x').c_str());
    ui::drain();
    EXPECT_EQ(ui::isViewable(part(list.holder(), "VertScrollBar")), bars == kStyleVertScroll);
    EXPECT_EQ(ui::isViewable(part(list.holder(), "HorScrollBar")), bars == kStyleHorzScroll);
  }
}

TEST_F(ListBox, AClickSelectsAndADoubleClickFollowsASelection) {
  zListBoxUnsorted list(frame.get(), place(), kUnsortedStyle, kId);
  fill(list);
  clickRow(list.widget(), 2);
  EXPECT_THAT(takeCodes(*frame), ElementsAre(kListSelectionChanged));
  EXPECT_EQ(list.selection(), 2);
  doubleClickRow(list.widget(), 3);
  EXPECT_THAT(takeCodes(*frame), ElementsAre(kListSelectionChanged, kListDoubleClick));
  EXPECT_EQ(list.selection(), 3);
  ui::pressKey(XK_Up);
  EXPECT_THAT(takeCodes(*frame), ElementsAre(kListSelectionChanged));
  EXPECT_EQ(list.selection(), 2);
}

TEST_F(ListBox, SetCurSelTellsNobodyAndDeselectingKeepsWhatWasChosenLast) {
  zListBoxUnsorted list(frame.get(), place(), kUnsortedStyle, kId);
  fill(list, 100);
  EXPECT_EQ(list.selection(), -1);
  EXPECT_EQ(list.setCurSel(100), 0);
  EXPECT_EQ(list.setCurSel(70), 1);
  EXPECT_TRUE(isRowSelected(list.widget(), 70));
  EXPECT_TRUE(isRowInView(list.widget(), 70));
  EXPECT_EQ(list.setCurSel(-1), 1);
  EXPECT_FALSE(isRowSelected(list.widget(), 70));
  EXPECT_EQ(list.selection(), 70) << "stays until the next selection";
  RWCString text;
  EXPECT_EQ(list.itemText(text, -1), 1);
  EXPECT_EQ(text, RWCString("row 70"));
  EXPECT_THAT(takeCodes(*frame), IsEmpty());
}

TEST_F(ListBox, TheSelectionFollowsItsRow) {
  zListBox list(frame.get(), place(), kSortedStyle, kId);
  list.add("m");
  list.add("z");
  list.setCurSel(0);
  list.add("a");
  EXPECT_EQ(list.selection(), 1);
  EXPECT_TRUE(isRowSelected(list.widget(), 1));
  EXPECT_EQ(list.remove(0), 1);
  EXPECT_EQ(list.selection(), 0);
  EXPECT_EQ(list.remove(0), 1);
  EXPECT_EQ(list.selection(), -1);
  EXPECT_EQ(list.remove(1), 0);
  list.clear();
  EXPECT_EQ(list.count(), 0);
}

TEST_F(ListBox, ExchangesTheChosenTextWithItsString) {
  zListBoxUnsorted list(frame.get(), place(), kUnsortedStyle, kId);
  fill(list);
  EXPECT_EQ(list.storeData(), 0);
  RWCString bound = "row 3";
  list.setBoundString(&bound);
  EXPECT_EQ(list.showData(), 1);
  EXPECT_EQ(list.selection(), 3);
  EXPECT_EQ(list.selectString("row 4"), 4);
  EXPECT_EQ(list.selectString("row"), -1);
  EXPECT_EQ(list.storeData(), 1);
  EXPECT_EQ(bound, RWCString("row 4"));
}

TEST_F(ListBox, AMultipleListExchangesAllChosenTexts) {
  zMultiList list(frame.get(), place(), kMultipleStyle, kId);
  fill(list);
  std::vector<RWCString> bound = {"row 3", "no such row", "row 0", "row 3", "row 3"};
  list.add("row 3");
  list.setBoundList(&bound);
  list.showData();
  EXPECT_THAT(list.selections(), ElementsAre(0, 3, 5)) << "equal texts are as many rows";
  list.remove(5);
  clickRow(list.widget(), 4);
  clickRow(list.widget(), 0);
  EXPECT_THAT(takeCodes(*frame), ElementsAre(kListSelectionChanged, kListSelectionChanged));
  list.storeData();
  EXPECT_THAT(bound, ElementsAre(RWCString("row 3"), RWCString("row 4")));
  list.setCurSel(-1);
  list.storeData();
  EXPECT_THAT(bound, IsEmpty());
}

TEST_F(ListBox, AnExtendedListTakesOneRowByAClickAndMoreWithControl) {
  zMultiList list(frame.get(), place(), kExtendedStyle, kId);
  std::vector<RWCString> bound = {"row 1", "row 2"};
  list.setBoundList(&bound);
  fill(list);
  list.showData();
  EXPECT_THAT(list.selections(), ElementsAre(1, 2));
  clickRow(list.widget(), 4);
  EXPECT_THAT(list.selections(), ElementsAre(4));
  EXPECT_THAT(takeCodes(*frame), ElementsAre(kListSelectionChanged));
}

TEST_F(ListBox, MayBeDeletedByEitherNotification) {
  for (const int code : {kListSelectionChanged, kListDoubleClick}) {
    auto* list = new zListBoxUnsorted(frame.get(), place(), kUnsortedStyle, kId + code);
    Executioner<zListBoxUnsorted> deleter(list);
    fill(*list);
    list->setNotify(&deleter, deleter.handler(), code);
    (code == kListDoubleClick ? doubleClickRow : clickRow)(list->widget(), 1);
    EXPECT_EQ(deleter.victim, nullptr) << "code " << code;
    ui::drain();
  }
}

}  // namespace
