// List boxes: rows, selection, notifications.

#include "framework/controls/list_box.h"

#include <ctime>
#include <memory>

#include <gmock/gmock.h>
#include <X11/keysym.h>

#include "framework/controls/multi_list.h"
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

enum SelectionPolicy { kMultipleSelect = 1, kExtendedSelect = 2, kBrowseSelect = 3 };

zSizer* place(int height = 200) {
  return new zSizer(10, 10, 200, height);
}

std::vector<std::string> textsOf(const zListBoxBase& list) {
  std::vector<std::string> texts;
  for (int row = 0; row < list.count(); ++row) {
    RWCString text;
    list.itemText(text, row);
    texts.push_back(text.str());
  }
  return texts;
}

class ListBox : public ControlTest {
 protected:
  void fill(zListBoxBase& list, int rows = 5) {
    for (int row = 0; row < rows; ++row) {
      list.add(("row " + std::to_string(row)).c_str());
    }
  }
};

TEST_F(ListBox, TheStyleChoosesTheSelectionPolicy) {
  const zListBox single(frame.get(), place(), kSortedStyle, kId);
  const zMultiList multiple(frame.get(), place(), kMultipleStyle, kId);
  const zMultiList extended(frame.get(), place(), kExtendedStyle, kId);
  EXPECT_EQ(selectionPolicy(single.widget()), kBrowseSelect);
  EXPECT_EQ(selectionPolicy(multiple.widget()), kMultipleSelect);
  EXPECT_EQ(selectionPolicy(extended.widget()), kExtendedSelect);
}

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
  const std::vector<std::string> texts = {"", "two\nlines", "a\ttab", "byte \xE4", " blanks "};
  for (const std::string& text : texts) {
    list.add(text.c_str());
  }
  ui::drain();
  EXPECT_EQ(textsOf(list), texts);
  RWCString text = "untouched";
  EXPECT_EQ(list.itemText(text, 5), 0);
  EXPECT_EQ(text, RWCString(""));
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
  std::vector<RWCString> bound = {"row 3", "no such row", "row 0"};
  list.setBoundList(&bound);
  list.showData();
  EXPECT_THAT(list.selections(), ElementsAre(0, 3));
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

TEST_F(ListBox, KeepsItsSizeWithAnotherFont) {
  zListBoxUnsorted list(frame.get(), place(), kUnsortedStyle, kId);
  fill(list);
  const ui::ScreenArea before = ui::areaOf(part(list.holder(), "ScrolledListBoxSW"));
  list.setFontSpec(zFontSpec("courier", {0, 24}), 1);
  ui::drain();
  EXPECT_EQ(ui::areaOf(part(list.holder(), "ScrolledListBoxSW")), before);
}

/// Deletes the list in the middle of its notification.
class Deleter : public zEvH {
 public:
  explicit Deleter(std::unique_ptr<zListBoxUnsorted>& victim) : list(victim) {}
  int onNotify(zEvent* /*event*/) {
    list.reset();
    return 1;
  }

 private:
  std::unique_ptr<zListBoxUnsorted>& list;
};

TEST_F(ListBox, MayBeDeletedByEitherNotification) {
  std::unique_ptr<zListBoxUnsorted> list;
  Deleter deleter(list);
  for (const int code : {kListSelectionChanged, kListDoubleClick}) {
    list = std::make_unique<zListBoxUnsorted>(frame.get(), place(), kUnsortedStyle, kId + code);
    fill(*list);
    list->setNotify(&deleter, toHandler(&Deleter::onNotify), code);
    if (code == kListDoubleClick) {
      doubleClickRow(list->widget(), 1);
    } else {
      clickRow(list->widget(), 1);
    }
    EXPECT_EQ(list, nullptr) << "code " << code;
    ui::drain();
  }
}

std::clock_t timeToAdd(zListBoxBase& list, int rows) {
  constexpr int kStep = 7919;
  const std::clock_t start = std::clock();
  for (int row = 0; row < rows; ++row) {
    list.add(("signal " + std::to_string(row * kStep % rows)).c_str());
  }
  ui::drain();
  return std::clock() - start;
}

TEST_F(ListBox, SortingLooksAtFewRowsForEachAddition) {
  constexpr int kRows = 2000;
  constexpr int kMostTimesLonger = 20;
  zListBox sorted(frame.get(), place(), kSortedStyle, kId);
  zListBoxUnsorted unsorted(frame.get(), place(), kUnsortedStyle, kId);
  zListBoxUnsorted other(frame.get(), place(), kUnsortedStyle, kId);
  // The widget looks for its visibility on every addition while it has the focus.
  focus(other);
  const std::clock_t plain = timeToAdd(unsorted, kRows);
  // Less than ten times as long, but a hundred times if every row were looked at.
  EXPECT_LT(timeToAdd(sorted, kRows), kMostTimesLonger * plain);
  EXPECT_EQ(sorted.count(), kRows);
  const std::vector<std::string> texts = textsOf(sorted);
  EXPECT_TRUE(std::is_sorted(texts.begin(), texts.end()));
}

}  // namespace
