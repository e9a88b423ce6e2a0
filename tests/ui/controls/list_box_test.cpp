// List boxes: rows, selection, notifications.

#include "framework/controls/list_box.h"

#include "tests/ui/controls/control_fixture.h"

#include <X11/keysym.h>

namespace {

using Rows = std::vector<int>;

constexpr int kId = 100;
constexpr std::uint32_t kSorted = 0x50B10103;
constexpr std::uint32_t kUnsorted = 0x50B10001;
constexpr std::uint32_t kMultiple = 0x50B10109;
constexpr std::uint32_t kExtended = 0x50B10909;

class ListBox : public ControlTest {
 protected:
  static zSizer* place() { return new zSizer(10, 10, 200, 200); }
  static void fill(zListBoxBase& list, int rows = 5) {
    for (int row = 0; row < rows; ++row) {
      list.add(("row " + std::to_string(row)).c_str());
    }
  }
};

TEST_F(ListBox, SortsIfStyleAndClassSaySoAndTheSelectionFollowsItsRow) {
  zListBox sorted(frame.get(), place(), kSorted, kId);
  zListBox bySorter(frame.get(), place(), kUnsorted, kId);
  zListBoxUnsorted byClass(frame.get(), place(), kSorted, kId);
  Rows places;
  for (const char* text : {"beta", "Alpha", "alpha", "Gamma"}) {
    for (zListBoxBase* list : std::initializer_list<zListBoxBase*>{&sorted, &bySorter, &byClass}) {
      places.push_back(list->add(text));
    }
    sorted.setCurSel(0);
  }
  EXPECT_EQ(places, (Rows{0, 0, 0, 0, 1, 1, 1, 2, 2, 3, 3, 3}));
  sorted.setCurSel(2);
  for (const char* text : {"a", "z"}) {
    sorted.add(text);
    EXPECT_EQ(sorted.selection(), 3);
    EXPECT_EQ(selectedRows(sorted.widget()), Rows{3});
  }
  sorted.addAll({"zz", "b", "alpha", "B"});
  byClass.addAll({"zz", "b"});
  EXPECT_EQ(textsOf(sorted),
            (Journal{"a", "Alpha", "alpha", "alpha", "B", "b", "beta", "Gamma", "z", "zz"}));
  EXPECT_EQ(sorted.selection(), 6);
  EXPECT_EQ(selectedRows(sorted.widget()), Rows{6});
  EXPECT_EQ(textsOf(byClass), (Journal{"beta", "Alpha", "alpha", "Gamma", "zz", "b"}));
  sorted.clear();
  EXPECT_EQ(sorted.count() + ui::resource(sorted.widget(), "itemCount"), 0);
  EXPECT_EQ(sorted.selection(), -1);
}

TEST_F(ListBox, GivesEveryTextBackAsItWasAndShowsALineOfItWithTheBarsOfItsStyle) {
  const Journal texts = {"",          "two\nlines", "a\ttab",
                         "byte \xE4", " blanks ",   std::string(40000, 'x')};
  for (const std::uint32_t bars : {0U, 0x00200000U, 0x00100000U}) {
    zListBoxUnsorted list(frame.get(), place(), 0x50810001 | bars, kId);
    list.addAll({texts.begin(), texts.end()});
    EXPECT_EQ(textsOf(list), texts);
    EXPECT_EQ(ui::resource(list.widget(), "itemCount"), 6);
    RWCString text = "untouched";
    EXPECT_EQ(list.itemText(text, 6), 0);
    EXPECT_EQ(text, RWCString(""));
    fill(list, 50);
    ui::drain();
    EXPECT_EQ(ui::isViewable(ui::part(list.holder(), "VertScrollBar")), bars == kStyleVertScroll);
    EXPECT_EQ(ui::isViewable(ui::part(list.holder(), "HorScrollBar")), bars == kStyleHorzScroll);
  }
}

TEST_F(ListBox, TellsWhatTheUserDoesAndNotWhatTheProgramDoes) {
  zListBoxUnsorted list(frame.get(), place(), kUnsorted, kId);
  fill(list, 100);
  const Told changed{{kId, kListSelectionChanged}};
  const Told doubled{{kId, kListDoubleClick}};
  const auto set = [&](int row, int result) {
    return [&list, row, result] { EXPECT_EQ(list.setCurSel(row), result); };
  };
  const auto key = [](ui::KeySymbol symbol) { return [=] { ui::pressKey(symbol); }; };
  // The view is the row that was chosen last, and the selected ones.
  const std::tuple<const char*, std::function<void()>, Rows, Told> steps[] = {
      {"too far", set(100, 0), {-1}, {}},
      {"set", set(70, 1), {70, 70}, {}},
      {"deselected", set(-1, 1), {70}, {}},
      {"first", set(0, 1), {0, 0}, {}},
      {"click", [&] { ui::clickRow(list.widget(), 2); }, {2, 2}, changed},
      {"double click",
       [&] { ui::doubleClickRow(list.widget(), 3); },
       {3, 3},
       {changed[0], doubled[0]}},
      {"up", key(XK_Up), {2, 2}, changed},
      {"return", key(XK_Return), {2, 2}, doubled},
      {"end", key(XK_End), {99, 99}, changed},
      {"home", key(XK_Home), {0, 0}, changed},
  };
  for (const auto& [name, act, expected, heard] : steps) {
    act();
    Rows view = selectedRows(list.widget());
    view.insert(view.begin(), list.selection());
    EXPECT_EQ(view, expected) << name;
    EXPECT_EQ(told(), heard) << name;
    EXPECT_TRUE(view.size() < 2 || isRowInView(list.widget(), view[1])) << name;
  }
  RWCString text;
  list.setCurSel(-1);
  EXPECT_EQ(list.itemText(text, -1), 1);
  EXPECT_EQ(text, RWCString("row 0")) << "what was chosen last";
  EXPECT_EQ(list.storeData() + list.showData(), 0);
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
  for (const std::uint32_t style : {kMultiple, kExtended}) {
    zMultiList list(frame.get(), place(), style, kId);
    EXPECT_EQ(list.storeData(), 0);
    fill(list);
    list.add("row 3");
    std::vector<RWCString> bound = {"row 3", "no such row", "row 0", "row 3", "row 3"};
    list.setBoundList(&bound);
    EXPECT_EQ(list.showData(), 1);
    EXPECT_EQ(list.selections(), (Rows{0, 3, 5})) << "equal texts are as many rows";
    EXPECT_EQ(selectedRows(list.widget()), list.selections());
    ui::clickRow(list.widget(), 4);
    ui::clickRow(list.widget(), 0);
    EXPECT_EQ(told(), (Told(2, {kId, kListSelectionChanged})));
    EXPECT_EQ(list.storeData(), 1);
    const std::vector<RWCString> all = {"row 3", "row 4", "row 3"};
    EXPECT_EQ(bound, style == kMultiple ? all : std::vector<RWCString>{"row 0"});
    list.setCurSel(-1);
    list.storeData();
    EXPECT_THAT(bound, testing::IsEmpty());
  }
}

TEST_F(ListBox, MayBeDeletedByEitherNotification) {
  for (const int code : {kListSelectionChanged, kListDoubleClick}) {
    auto* list = new zListBoxUnsorted(frame.get(), place(), kUnsorted, kId + code);
    fill(*list);
    list->setNotify(&listener, Listener::handler(), code);
    listener.action = [&] { delete std::exchange(list, nullptr); };
    (code == kListDoubleClick ? ui::doubleClickRow : ui::clickRow)(list->widget(), 1);
    EXPECT_EQ(list, nullptr) << "code " << code;
    ui::drain();
  }
}

}  // namespace
