#include <gtest/gtest.h>

#include <climits>

#include "framework/draw/measure.h"
#include "framework/draw/screen.h"

namespace {

struct Row {
  int (*convert)(int, int);
  int measure;
  int by;  ///< dots per inch, or the width or height of the reference text
  int pixels;
};

TEST(Units, BecomePixels) {
  for (const Row& row : {
           Row{tenthsOfPointToPixels, 110, 95, 15},
           {tenthsOfPointToPixels, 102, 95, 13},
           // 34 * 95 / 72 is 44 after truncation: rounding starts from that and not from 44.9.
           {tenthsOfPointToPixels, 34, 95, 4},
           {tenthsOfPointToPixels, 110, 0, 0},
           {tenthsOfPointToPixels, INT_MAX, INT_MAX, INT_MAX},
           {tenthsOfPointToPixels, INT_MIN, INT_MAX, INT_MIN},
           {dialogUnitsX, 4, 337, 7},      // 25 rest 48: 25 + 1 + 1 = 27, 6 rest 3
           {dialogUnitsX, 160, 337, 260},  // 1036 rest 48: 1038, 259 rest 2
           {dialogUnitsX, 1, 52 * 2, 1},   // 2 rest 0: 3, 0 rest 3
           {dialogUnitsX, 1, 52 * 4, 1},   // 4 rest 0: 5, 1 rest 1
           {dialogUnitsX, 1, 25, 0},       // 0 rest 25: not rounded, 1
           {dialogUnitsX, 1, 26, 1},       // 0 rest 26: rounded, 2
           {dialogUnitsX, 0, 337, 0},      // the one quarter alone
           // Intended: the height grows by a third and a sixth of the units.
           {dialogUnitsY, 4, 12, 6 + 1 + 0},
           {dialogUnitsY, 1, 12, 2},
           {dialogUnitsY, 1, 11, 1},
           {dialogUnitsY, 114, 12, 171 + 38 + 19},
           {dotsPerInch, 1280, 339, 95},
           {dotsPerInch, 1280, 325, 100},
           {dotsPerInch, 1280, 0, 0},
       }) {
    EXPECT_EQ(row.convert(row.measure, row.by), row.pixels) << row.measure << ' ' << row.by;
  }
}

TEST(Units, FollowTheResolutionAndWithoutAFontFifteenPixelsACharacter) {
  theScreen().dotsPerInchX = 72;
  theScreen().dotsPerInchY = 144;
  EXPECT_EQ(zPrPoint(100, 100).size(), (zDimension{10, 20}));
  theScreen().dotsPerInchX = theScreen().dotsPerInchY = 0;
  const zDialogUnit unit(4, 8);
  EXPECT_EQ(unit.size(), (zDimension{dialogUnitsX(4, 52 * 15), dialogUnitsY(8, 15)}));
  EXPECT_EQ(zPoint(unit.x(), unit.y()), (zPoint{4, 8}));
}

}  // namespace
