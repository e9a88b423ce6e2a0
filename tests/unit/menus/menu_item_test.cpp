// Texts, states and lists of menu items.

#include "framework/menus/menu_item.h"

#include <gtest/gtest.h>

namespace {

TEST(MenuItem, TakesMnemonicAndAcceleratorOutOfEachTextOnce) {
  ziMenuItem item(1, "&File", 0);
  EXPECT_EQ(item.mnemonic, 0);
  std::string seen;
  for (const char* text : {"&Open...\tCtrl+O", "A && &B", "A && B", "Plain\tA\tB", "\tF3", ""}) {
    item.setText(RWCString(text));
    item.parseText();
    item.parseText();  // as a popup does, each time that it is shown
    const ziMenuLabel parts = splitMenuText(item.text.view());
    seen += std::to_string(item.mnemonic) + "|" + parts.label + "|" + parts.accelerator + "\n";
  }
  EXPECT_EQ(seen, "79|Open...|Ctrl+O\n66|A & B|\n0|A & B|\n0|Plain|A\tB\n0||F3\n0||\n");
}

// Intended: nothing tells that an item is checked, and a picture's item starts greyed.
TEST(MenuItem, StartsInTheStateOfItsFlagsAndTellsThemWhenSelected) {
  constexpr struct {
    int id;
    unsigned flags;
    const char* wanted;
  } kRows[] = {{1, 0, "1 state 0 tells 0"},
               {0, 0, "0 state 0 tells 0"},
               {1, kItemGreyed, "1 state 1 tells 3"},
               {1, kItemDisabled, "1 state 1 tells 3"},
               {1, kItemChecked, "1 state 16 tells 0"},
               {1, kItemChecked | kItemGreyed, "1 state 17 tells 3"},
               {1, kItemBitmap | kItemChecked, "1 state 1 tells 7"},
               {0, kItemSeparator, "-1 state 0 tells 16"},
               {7, kItemSeparator, "7 state 0 tells 0"}};
  for (const auto& row : kRows) {
    const ziMenuItem item(row.id, nullptr, row.flags);
    EXPECT_EQ(std::to_string(item.id) + " state " + std::to_string(item.state) + " tells " +
                  std::to_string(item.selectFlags()),
              row.wanted);
    EXPECT_EQ(item.isSeparator(), (row.flags & kItemSeparator) != 0);
  }
  ziMenuItem subMenu(5, "Sub", kItemGreyed);
  subMenu.subItems = std::make_shared<ziMenuItemDList>(nullptr);
  EXPECT_EQ(subMenu.selectFlags(), kItemSubMenu);
}

// Intended: to check or not, whatever is not 0 counts as greyed, also the check mark itself.
TEST(MenuItem, GreyingKeepsTheCheckMarkAndCheckingAChangedItemGreysIt) {
  std::string states;
  for (const unsigned before : {0x00U, 0x01U, 0x10U, 0x11U}) {
    for (const bool isSet : {true, false}) {
      states += std::to_string(greyedMenuItemState(before, isSet)) + "," +
                std::to_string(checkedMenuItemState(before, isSet)) + " ";
    }
  }
  EXPECT_EQ(states, "1,16 0,0 1,17 0,1 17,17 16,1 17,17 16,1 ");
}

TEST(MenuItemList, FindsTheFirstItemOfAnIdAlsoInSubMenusButNoneWithoutAnId) {
  ziMenuItemDList list(nullptr);
  const auto add = [](ziMenuItemDList& to, int position, int id, const char* text) {
    return to.insert(position, std::make_shared<ziMenuItem>(id, text, 0U));
  };
  EXPECT_EQ(add(list, -1, 2, "outer"), 0);
  EXPECT_EQ(add(list, 0, kNoItemId, "Sub"), 0);
  EXPECT_EQ(add(list, 99, 5, "last"), 2);
  EXPECT_EQ(add(list, 2, 8, "third"), 2);
  ziMenuItem& subMenu = *list.at(0);
  subMenu.subItems = std::make_shared<ziMenuItemDList>(nullptr);
  add(*subMenu.subItems, 0, 2, "inner");
  EXPECT_EQ(list.find(2).item().text, RWCString("inner"));
  EXPECT_EQ(list.find(8).index, 2);
  EXPECT_FALSE(list.find(3) || list.find(kNoItemId));
  EXPECT_TRUE(list.at(3) != nullptr && list.at(4) == nullptr && list.at(-1) == nullptr);
  const std::shared_ptr<ziMenuItem> removed = subMenu.shared_from_this();
  EXPECT_TRUE(list.remove(subMenu));
  EXPECT_FALSE(list.remove(subMenu));
  EXPECT_EQ(list.find(2).item().text, RWCString("outer"));
}

}  // namespace
