// Texts and states of menu items.

#include "framework/menus/menu_item.h"

#include <gtest/gtest.h>

namespace {

TEST(MenuItem, TakesMnemonicAndAcceleratorOutOfEachTextOnce) {
  ziMenuItem item(1, "&File", 0);
  std::string seen = std::to_string(item.mnemonic) + "\n";
  for (const char* text : {"&Open...\tCtrl+O", "A && &B", "A && B", "Plain\tA\tB", "\tF3", ""}) {
    item.setText(RWCString(text));
    item.parseText();
    item.parseText();  // as a popup does, each time that it is shown
    const ziMenuLabel parts = splitMenuText(item.text.view());
    seen += std::to_string(item.mnemonic) + "|" + parts.label + "|" + parts.accelerator + "\n";
  }
  EXPECT_EQ(seen, "0\n79|Open...|Ctrl+O\n66|A & B|\n0|A & B|\n0|Plain|A\tB\n0||F3\n0||\n");
}

// Intended: nothing tells that an item is checked, and a picture's item starts greyed.
TEST(MenuItem, StartsInTheStateOfItsFlagsAndTellsThemWhenSelected) {
  constexpr unsigned kFlags[] = {
      0,           kItemGreyed,   kItemDisabled, kItemChecked, kItemChecked | kItemGreyed,
      kItemBitmap, kItemSeparator};
  std::string told;
  for (const unsigned flags : kFlags) {
    const ziMenuItem item(7, nullptr, flags);
    told += std::to_string(item.state) + " tells " + std::to_string(item.selectFlags()) + "\n";
  }
  EXPECT_EQ(told,
            "0 tells 0\n1 tells 3\n1 tells 3\n16 tells 0\n17 tells 3\n1 tells 7\n0 tells 0\n");
  EXPECT_EQ(ziMenuItem(0, nullptr, 0).id, 0);
  EXPECT_EQ(ziMenuItem(0, nullptr, kItemSeparator).id, kNoItemId);
  EXPECT_EQ(ziMenuItem(kNoItemId, nullptr, 0).selectFlags(), kItemSubMenu);
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

}  // namespace
