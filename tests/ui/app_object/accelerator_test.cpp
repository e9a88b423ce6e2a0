#include "framework/core/accelerator.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned kF3 = 65472;
constexpr unsigned kControlO = 15;

TEST(AcceleratorTable, KnowsTheVirtualKeysByNameAndNoOthers) {
  EXPECT_EQ(virtualKeysym("VK_F1"), 65470U);
  EXPECT_EQ(virtualKeysym("VK_F12"), 65481U);
  EXPECT_EQ(virtualKeysym("VK_DELETE"), 65535U);
  EXPECT_EQ(virtualKeysym("VK_INSERT"), 65379U);
  EXPECT_EQ(virtualKeysym("VK_UP"), 65362U);
  for (const char* other : {"VK_DOWN", "VK_F", "VK_Fx", "VK_F1x", "VK_F-1", "VK_UPPER", ""}) {
    EXPECT_EQ(virtualKeysym(other), std::nullopt) << other;
  }
}

TEST(AcceleratorTable, EndsAtItsEndRowAndTakesTheKeyByTheKindOfTheRow) {
  const AcceleratorRow rows[] = {
      {7, 1, "open", kAccelCharacter, 0},   {7, 2, "open", kAccelKeysym, 0},
      {7, 3, "VK_F3", kAccelVirtualKey, 0}, {7, 4, "VK_NONE", kAccelVirtualKey, 0},
      {7, 5, "", kAccelCharacter, 0},       {0, 0, nullptr, kAccelEnd, 0},
      {7, 6, "x", kAccelCharacter, 0},
  };
  const std::vector<zAccel> table = makeAccelerators(rows);
  ASSERT_EQ(table.size(), 5U);
  EXPECT_EQ(table[0].keyCode, 'o');
  EXPECT_EQ(table[1].keyCode, 7U);
  EXPECT_EQ(table[2].keyCode, kF3);
  // These two can never be pressed, not even by an event without a character or a keysym.
  EXPECT_EQ(findAccelerator({table[3], table[4]}, 0, 0, 0), nullptr);
}

TEST(AcceleratorTable, FindsTheFirstEntryWhoseModifiersAreAmongThoseDown) {
  const AcceleratorRow rows[] = {
      {0, 1, "o", kAccelCharacter, kAccelControl | kAccelShift},
      {0, 2, "o", kAccelCharacter, kAccelControl},
      {0, 3, "o", kAccelCharacter, kAccelAlt},
      {0, 4, "VK_F3", kAccelVirtualKey, 1},
      {0, 0, nullptr, kAccelEnd, 0},
  };
  const std::vector<zAccel> table = makeAccelerators(rows);
  struct Case {
    unsigned character;
    unsigned keysym;
    unsigned modifiers;
    int command;
  };
  const Case cases[] = {
      {kControlO, 'o', kStateControl, 2},
      {'o', 'x', kStateControl, 2},
      {kControlO, 'o', kStateControl | kStateShift, 1},
      {'o', 'o', kStateMod1, 3},
      {'o', 'o', kStateControl | kStateMod1 | kStateLock, 2},
      {'o', 'o', 0, 0},
      {'o', 'o', kStateShift, 0},
      {kF3, kF3, 0, 4},
      {kF3, kF3, kStateControl | kStateShift | kStateMod1, 4},
      {kControlO, 'p', kStateControl, 0},
  };
  for (const Case& row : cases) {
    const zAccel* found = findAccelerator(table, row.character, row.keysym, row.modifiers);
    EXPECT_EQ(found == nullptr ? 0 : found->command, row.command)
        << row.character << " " << row.keysym << " " << row.modifiers;
  }
}

}  // namespace
