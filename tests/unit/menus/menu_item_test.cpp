// Texts, states and lists of menu items.

#include "framework/menus/menu_item.h"

#include <gtest/gtest.h>

namespace {

TEST(MenuItem, TakesMnemonicAndAcceleratorOutOfItsText) {
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
      {"&One &Two", 'T', "One Two", ""},
      {"Ends in &", 0, "Ends in &", ""},
      {"Plain\tA\tB", 0, "Plain", "A\tB"},
      {"\tF3", 0, "", "F3"},
      {"", 0, "", ""},
  };
  for (const Case& row : cases) {
    ziMenuItem item(1, row.text, 0);
    EXPECT_EQ(item.mnemonic, 0) << row.text;
    item.parseText();
    EXPECT_EQ(item.mnemonic, row.mnemonic) << row.text;
    const ziMenuLabel parts = splitMenuText(item.text.view());
    EXPECT_EQ(parts.label, row.label) << row.text;
    EXPECT_EQ(parts.accelerator, row.accelerator) << row.text;
  }
}

// A popup builds its items each time it is shown.
TEST(MenuItem, ParsesATextOnceAndANewTextAnew) {
  ziMenuItem item(1, "Save && &Quit", 0);
  item.parseText();
  item.parseText();
  EXPECT_EQ(item.text, RWCString("Save & Quit"));
  EXPECT_EQ(item.mnemonic, 'Q');
  ziMenuItem doubled(1, "A && B", 0);
  doubled.parseText();
  doubled.parseText();
  EXPECT_EQ(doubled.text, RWCString("A & B"));
  EXPECT_EQ(doubled.mnemonic, 0);
  item.setText("&Leave");
  item.parseText();
  EXPECT_EQ(item.text, RWCString("Leave"));
  EXPECT_EQ(item.mnemonic, 'L');
}

TEST(MenuItem, StartsInTheStateOfItsFlagsAndTellsThemWhenSelected) {
  struct Case {
    unsigned flags;
    unsigned state;
    int selectFlags;
  };
  const Case cases[] = {
      {0, 0x00, 0},
      {kItemGreyed, 0x01, 3},
      {kItemDisabled, 0x01, 3},
      {kItemChecked | kItemGreyed, 0x11, 3},
      // Intended: nothing tells that an item is checked, and a picture's item starts greyed.
      {kItemChecked, 0x10, 0},
      {kItemBitmap, 0x01, 7},
      {kItemBitmap | kItemChecked, 0x01, 7},
  };
  for (const Case& row : cases) {
    const ziMenuItem item(1, "x", row.flags);
    EXPECT_EQ(item.state, row.state) << row.flags;
    EXPECT_EQ(item.selectFlags(), row.selectFlags) << row.flags;
  }
}

TEST(MenuItem, ASeparatorHasNoIdUnlessItWasGivenOneAndIsSelectedLikeASubMenu) {
  const ziMenuItem separator(0, nullptr, kItemSeparator);
  EXPECT_EQ(separator.id, kNoItemId);
  EXPECT_EQ(separator.selectFlags(), kItemSubMenu);
  EXPECT_EQ(ziMenuItem(7, "", kItemSeparator).id, 7);
  EXPECT_EQ(ziMenuItem(0, "", 0).id, 0);
  ziMenuItem subMenu(5, "Sub", kItemGreyed);
  subMenu.subItems = std::make_shared<ziMenuItemDList>(nullptr);
  EXPECT_EQ(subMenu.selectFlags(), kItemSubMenu);
}

TEST(MenuItem, GreyingKeepsTheCheckMark) {
  EXPECT_EQ(greyedMenuItemState(0x00, true), 0x01U);
  EXPECT_EQ(greyedMenuItemState(0x10, true), 0x11U);
  EXPECT_EQ(greyedMenuItemState(0x01, true), 0x01U);
  EXPECT_EQ(greyedMenuItemState(0x11, false), 0x10U);
  EXPECT_EQ(greyedMenuItemState(0x01, false), 0x00U);
}

// Intended: whatever is not 0 counts as greyed, also the check mark itself.
TEST(MenuItem, CheckingAnItemThatIsCheckedOrUncheckingItGreysIt) {
  EXPECT_EQ(checkedMenuItemState(0x00, true), 0x10U);
  EXPECT_EQ(checkedMenuItemState(0x00, false), 0x00U);
  EXPECT_EQ(checkedMenuItemState(0x01, true), 0x11U);
  EXPECT_EQ(checkedMenuItemState(0x11, false), 0x01U);
  EXPECT_EQ(checkedMenuItemState(0x10, true), 0x11U);
  EXPECT_EQ(checkedMenuItemState(0x10, false), 0x01U);
}

TEST(MenuItemList, FindsTheFirstItemOfAnIdAlsoInSubMenusButNoneWithoutAnId) {
  ziMenuItemDList list(nullptr);
  auto subMenu = std::make_shared<ziMenuItem>(kNoItemId, "Sub", 0U);
  subMenu->subItems = std::make_shared<ziMenuItemDList>(nullptr);
  subMenu->subItems->insert(0, std::make_shared<ziMenuItem>(2, "inner", 0U));
  list.insert(-1, std::make_shared<ziMenuItem>(2, "outer", 0U));
  list.insert(0, subMenu);
  list.insert(99, std::make_shared<ziMenuItem>(0, "", kItemSeparator));
  ASSERT_EQ(list.size(), 3);
  EXPECT_EQ(list.at(1)->text, RWCString("outer"));
  EXPECT_EQ(list.find(2).item().text, RWCString("inner"));
  EXPECT_FALSE(list.find(3));
  EXPECT_FALSE(list.find(kNoItemId));
  EXPECT_EQ(list.at(3), nullptr);
  EXPECT_EQ(list.at(-1), nullptr);
  EXPECT_TRUE(list.remove(*subMenu));
  EXPECT_FALSE(list.remove(*subMenu));
  EXPECT_EQ(list.find(2).item().text, RWCString("outer"));
}

}  // namespace
