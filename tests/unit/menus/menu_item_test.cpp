// Texts, states and lists of menu items.

#include "framework/menus/menu_item.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace {

TEST(MenuItem, TakesMnemonicAndAcceleratorOutOfItsTextOnceAndOutOfANewTextAnew) {
  const std::tuple<const char*, char, const char*, const char*> rows[] = {
      {"&File", 'F', "File", ""},
      {"&Open...\tCtrl+O", 'O', "Open...", "Ctrl+O"},
      {"Cut && Paste", 0, "Cut & Paste", ""},
      {"Save && &Quit", 'Q', "Save & Quit", ""},
      {"&One &Two", 'T', "One Two", ""},
      {"Ends in &", 0, "Ends in &", ""},
      {"Plain\tA\tB", 0, "Plain", "A\tB"},
      {"\tF3", 0, "", "F3"},
      {"", 0, "", ""}};
  ziMenuItem changing(1, "A && B", 0);
  for (const auto& [text, mnemonic, label, accelerator] : rows) {
    ziMenuItem item(1, text, 0);
    EXPECT_EQ(item.mnemonic, 0) << text;
    changing.setText(RWCString(text));
    for (ziMenuItem* parsed : {&item, &changing}) {
      parsed->parseText();
      parsed->parseText();  // as a popup does, each time that it is shown
      const ziMenuLabel parts = splitMenuText(parsed->text.view());
      EXPECT_EQ(std::tie(parsed->mnemonic, parts.label, parts.accelerator),
                std::make_tuple(mnemonic, std::string(label), std::string(accelerator)));
    }
  }
}

TEST(MenuItem, StartsInTheStateOfItsFlagsAndTellsThemWhenSelected) {
  // Intended: nothing tells that an item is checked, and a picture's item starts greyed.
  const struct {
    int id;
    unsigned flags;
    int idAfter;
    unsigned state;
    int selectFlags;
  } rows[] = {{1, 0, 1, 0x00, 0},
              {0, 0, 0, 0x00, 0},
              {1, kItemGreyed, 1, 0x01, 3},
              {1, kItemDisabled, 1, 0x01, 3},
              {1, kItemChecked | kItemGreyed, 1, 0x11, 3},
              {1, kItemChecked, 1, 0x10, 0},
              {1, kItemBitmap, 1, 0x01, 7},
              {1, kItemBitmap | kItemChecked, 1, 0x01, 7},
              {0, kItemSeparator, kNoItemId, 0x00, kItemSubMenu},
              {7, kItemSeparator, 7, 0x00, 0}};
  for (const auto& row : rows) {
    const ziMenuItem item(row.id, nullptr, row.flags);
    EXPECT_EQ(std::make_tuple(item.id, unsigned{item.state}, int{item.selectFlags()}),
              std::tie(row.idAfter, row.state, row.selectFlags))
        << row.flags;
    EXPECT_EQ(item.isSeparator(), (row.flags & kItemSeparator) != 0) << row.flags;
    EXPECT_EQ(item.text, RWCString(""));
  }
  ziMenuItem subMenu(5, "Sub", kItemGreyed);
  subMenu.subItems = std::make_shared<ziMenuItemDList>(nullptr);
  EXPECT_EQ(subMenu.selectFlags(), kItemSubMenu);
}

TEST(MenuItem, GreyingKeepsTheCheckMarkAndCheckingAChangedItemGreysIt) {
  // Before; greyed, not greyed, checked, not checked. Intended: to check or not, whatever is not 0
  // counts as greyed, also the check mark itself.
  constexpr unsigned kRows[][5] = {{0x00, 0x01, 0x00, 0x10, 0x00},
                                   {0x01, 0x01, 0x00, 0x11, 0x01},
                                   {0x10, 0x11, 0x10, 0x11, 0x01},
                                   {0x11, 0x11, 0x10, 0x11, 0x01}};
  for (const auto& row : kRows) {
    const unsigned states[] = {
        row[0], greyedMenuItemState(row[0], true), greyedMenuItemState(row[0], false),
        checkedMenuItemState(row[0], true), checkedMenuItemState(row[0], false)};
    EXPECT_TRUE(std::equal(std::begin(row), std::end(row), states)) << row[0];
  }
}

TEST(MenuItemList, FindsTheFirstItemOfAnIdAlsoInSubMenusButNoneWithoutAnId) {
  ziMenuItemDList list(nullptr);
  auto subMenu = std::make_shared<ziMenuItem>(kNoItemId, "Sub", 0U);
  subMenu->subItems = std::make_shared<ziMenuItemDList>(nullptr);
  subMenu->subItems->insert(0, std::make_shared<ziMenuItem>(2, "inner", 0U));
  const int places[] = {list.insert(-1, std::make_shared<ziMenuItem>(2, "outer", 0U)),
                        list.insert(0, subMenu),
                        list.insert(99, std::make_shared<ziMenuItem>(0, "", kItemSeparator)),
                        list.insert(2, std::make_shared<ziMenuItem>(8, "third", 0U))};
  EXPECT_EQ((std::vector(std::begin(places), std::end(places))), (std::vector{0, 0, 2, 2}));
  ASSERT_EQ(list.size(), 4);
  EXPECT_EQ(list.at(1)->text, RWCString("outer"));
  EXPECT_EQ(list.find(2).item().text, RWCString("inner"));
  EXPECT_EQ(list.find(8).index, 2);
  EXPECT_FALSE(list.find(3));
  EXPECT_FALSE(list.find(kNoItemId));
  EXPECT_EQ(list.at(4), nullptr);
  EXPECT_EQ(list.at(-1), nullptr);
  EXPECT_TRUE(list.remove(*subMenu));
  EXPECT_FALSE(list.remove(*subMenu));
  EXPECT_EQ(list.find(2).item().text, RWCString("outer"));
}

}  // namespace
