// Where a drop-down list goes.

#include <gtest/gtest.h>

#include <ostream>

#include "framework/controls/combo_box.h"

static std::ostream& operator<<(std::ostream& out, const zRect& rect) {
  return out << rect.left << "," << rect.top << " " << rect.width() << "x" << rect.height();
}

namespace {

constexpr zDimension kScreen{1000, 800};

zRect at(int x, int y, int width, int height) {
  return zRect(zPoint{x, y}, zDimension{width, height});
}

struct Case {
  const char* situation;
  zRect entry;
  zDimension list;
  zRect expected;
};

const Case kCases[] = {
    {"room below", at(100, 100, 200, 20), {220, 120}, at(100, 120, 220, 120)},
    {"just room below", at(100, 660, 200, 20), {220, 120}, at(100, 680, 220, 120)},
    {"room only above", at(100, 661, 200, 20), {220, 120}, at(100, 541, 220, 120)},
    {"no room, more below", at(100, 300, 200, 20), {220, 700}, at(100, 320, 220, 480)},
    {"no room, more above", at(100, 600, 200, 20), {220, 700}, at(100, 0, 220, 600)},
    {"cut at the right", at(900, 100, 200, 20), {220, 120}, at(780, 120, 220, 120)},
    {"cut at the left", at(-50, 100, 200, 20), {220, 120}, at(0, 120, 220, 120)},
    {"wider than the screen", at(10, 100, 2000, 20), {2020, 120}, at(0, 120, 2020, 120)},
    {"entry below the screen", at(100, 900, 200, 20), {220, 1200}, at(100, 0, 220, 900)},
};

TEST(DropDownPlace, StaysOnTheScreen) {
  for (const Case& row : kCases) {
    EXPECT_EQ(dropDownRect(row.entry, row.list, kScreen), row.expected) << row.situation;
  }
}

}  // namespace
