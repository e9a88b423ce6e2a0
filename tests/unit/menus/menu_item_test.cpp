// Texts, states and lists of menu items.

#include "framework/menus/menu_item.h"

#include <gtest/gtest.h>

namespace {

TEST(MenuItem, TakesMnemonicAndAcceleratorOutOfItsTextOnceAndOutOfANewTextAnew) {
  struct Case {
    const char* text;
    char mnemonic;
    const char* label;
    const char* accelerator;
  };
  const Case cases[] = {
      {"&File", 'F', "File", ""},
      {"&Open...\tCtrl+O", 'O', "Open...", "Ctrl+O"},
      {"Cut && Paste", 0, "Cut & Paste", ""},
      {"Save && &Quit", 'Q', "Save & Quit", ""},
      {"&One &Two", 'T', "One Two", ""},
      {"Ends in &", 0, "Ends in &", ""},
      {"Plain\tA\tB", 0, "Plain", "A\tB"},
      {"\tF3", 0, "", "F3"},
      {"", 0, "", ""},
  };
  ziMenuItem changing(1, "A && B", 0);
  for (const Case& row : cases) {
    ziMenuItem item(1, row.text, 0);
    EXPECT_EQ(item.mnemonic, 0) << row.text;
    changing.setText(RWCString(row.text));
    for (ziMenuItem* parsed : {&item, &changing}) {
      parsed->parseText();
      parsed->parseText();  // as a popup does, each time that it is shown
      const ziMenuLabel parts = splitMenuText(parsed->text.view());
      EXPECT_EQ(parsed->mnemonic, row.mnemonic) << row.text;
      EXPECT_EQ(parts.label, row.label) << row.text;
      EXPECT_EQ(parts.accelerator, row.accelerator) << row.text;
    }
  }
}

TEST(MenuItem, StartsInTheStateOfItsFlagsAndTellsThemWhenSelected) {
  struct Case {
    int id;
    unsigned flags;
    int idAfter;
    unsigned state;
    int selectFlags;
  };
  const Case cases[] = {
      {1, 0, 1, 0x00, 0},
      {0, 0, 0, 0x00, 0},
      {1, kItemGreyed, 1, 0x01, 3},
      {1, kItemDisabled, 1, 0x01, 3},
      {1, kItemChecked | kItemGreyed, 1, 0x11, 3},
      // Intended: nothing tells that an item is checked, and a picture's item starts greyed.
      {1, kItemChecked, 1, 0x10, 0},
      {1, kItemBitmap, 1, 0x01, 7},
      {1, kItemBitmap | kItemChecked, 1, 0x01, 7},
      {0, kItemSeparator, kNoItemId, 0x00, kItemSubMenu},
      {7, kItemSeparator, 7, 0x00, 0},
  };
  for (const Case& row : cases) {
    const ziMenuItem item(row.id, nullptr, row.flags);
    EXPECT_EQ(item.id, row.idAfter) << row.flags;
    EXPECT_EQ(item.state, row.state) << row.flags;
    EXPECT_EQ(item.selectFlags(), row.selectFlags) << row.flags;
    EXPECT_EQ(item.isSeparator(), (row.flags & kItemSeparator) != 0) << row.flags;
    EXPECT_EQ(item.text, RWCString(""));
  }
  ziMenuItem subMenu(5, "Sub", kItemGreyed);
  subMenu.subItems = std::make_shared<ziMenuItemDList>(nullptr);
  EXPECT_EQ(subMenu.selectFlags(), kItemSubMenu);
}

TEST(MenuItem, GreyingKeepsTheCheckMarkAndCheckingAChangedItemGreysIt) {
  struct Case {
    unsigned before, greyed, ungreyed, checked, unchecked;
  };
  // Intended: to check or not, whatever is not 0 counts as greyed, also the check mark itself.
  const Case cases[] = {
      {0x00, 0x01, 0x00, 0x10, 0x00},
      {0x01, 0x01, 0x00, 0x11, 0x01},
      {0x10, 0x11, 0x10, 0x11, 0x01},
      {0x11, 0x11, 0x10, 0x11, 0x01},
  };
  for (const Case& row : cases) {
    EXPECT_EQ(greyedMenuItemState(row.before, true), row.greyed) << row.before;
    EXPECT_EQ(greyedMenuItemState(row.before, false), row.ungreyed) << row.before;
    EXPECT_EQ(checkedMenuItemState(row.before, true), row.checked) << row.before;
    EXPECT_EQ(checkedMenuItemState(row.before, false), row.unchecked) << row.before;
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
