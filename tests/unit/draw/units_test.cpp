#include <gtest/gtest.h>

#include <climits>

#include "framework/draw/measure.h"
#include "framework/draw/screen.h"

namespace {

TEST(Units, BecomePixels) {
  EXPECT_EQ(tenthsOfPointToPixels(110, 95), 15);
  EXPECT_EQ(tenthsOfPointToPixels(102, 95), 13);
  EXPECT_EQ(tenthsOfPointToPixels(34, 95), 4) << "44 after truncation: rounded from that, not 44.9";
  EXPECT_EQ(tenthsOfPointToPixels(INT_MAX, INT_MAX), INT_MAX);
  EXPECT_EQ(tenthsOfPointToPixels(INT_MIN, INT_MAX), INT_MIN);
  EXPECT_EQ(dialogUnitsX(4, 337), 7) << "25 rest 48: 25 + 1 + 1 = 27, 6 rest 3";
  EXPECT_EQ(dialogUnitsX(160, 337), 260) << "1036 rest 48: 1038, 259 rest 2";
  EXPECT_EQ(dialogUnitsX(1, 52 * 2), 1) << "2 rest 0: 3, 0 rest 3";
  EXPECT_EQ(dialogUnitsX(1, 52 * 4), 1) << "4 rest 0: 5, 1 rest 1";
  EXPECT_EQ(dialogUnitsX(1, 25), 0) << "0 rest 25: not rounded, 1";
  EXPECT_EQ(dialogUnitsX(1, 26), 1) << "0 rest 26: rounded, 2";
  // Intended: the height grows by a third and a sixth of the units.
  EXPECT_EQ(dialogUnitsY(4, 12), 6 + 1 + 0);
  EXPECT_EQ(dialogUnitsY(1, 12), 2);
  EXPECT_EQ(dialogUnitsY(1, 11), 1);
  EXPECT_EQ(dialogUnitsY(114, 12), 171 + 38 + 19);
  EXPECT_EQ(dotsPerInch(1280, 339), 95);
  EXPECT_EQ(dotsPerInch(1280, 325), 100);
  EXPECT_EQ(dotsPerInch(1280, 0), 0);
}

TEST(Units, FollowTheResolutionAndWithoutAFontFifteenPixelsACharacter) {
  theScreen().dotsPerInchX = 72;
  theScreen().dotsPerInchY = 144;
  EXPECT_EQ(zPrPoint(100, 100).size(), (zDimension{10, 20}));
  theScreen().dotsPerInchX = theScreen().dotsPerInchY = 0;
  EXPECT_EQ(zDialogUnit(4, 8).size(), (zDimension{dialogUnitsX(4, 52 * 15), dialogUnitsY(8, 15)}));
}

}  // namespace
