#include "framework/draw/measure.h"

#include <gtest/gtest.h>

#include <climits>
#include <string_view>

#include "framework/draw/screen.h"

namespace {

TEST(TenthsOfPoint, RoundToPixels) {
  EXPECT_EQ(tenthsOfPointToPixels(110, 95), 15);
  EXPECT_EQ(tenthsOfPointToPixels(110, 72), 11);
  EXPECT_EQ(tenthsOfPointToPixels(102, 95), 13);
  // 34 * 95 / 72 is 44 after truncation: rounding starts from that and not from 44.9.
  EXPECT_EQ(tenthsOfPointToPixels(34, 95), 4);
  EXPECT_EQ(tenthsOfPointToPixels(110, 0), 0);
  EXPECT_EQ(tenthsOfPointToPixels(INT_MAX, INT_MAX), INT_MAX);
}

TEST(DialogUnit, TextHasLBeforeK) {
  const std::string_view text = kDialogUnitText;
  EXPECT_EQ(text.size(), 52U);
  EXPECT_EQ(text.substr(9, 4), "JLKM");
}

struct XRow {
  int units;
  int reference;
  int pixels;
};

TEST(DialogUnit, HorizontalRoundsTwiceAndAddsOneQuarter) {
  for (const XRow& row : {
           XRow{4, 337, 7},      // 25 rest 48: 25 + 1 + 1 = 27, 6 rest 3
           XRow{160, 337, 260},  // 1036 rest 48: 1038, 259 rest 2
           XRow{1, 52 * 2, 1},   // 2 rest 0: 3, 0 rest 3
           XRow{1, 52 * 4, 1},   // 4 rest 0: 5, 1 rest 1
           XRow{1, 25, 0},       // 0 rest 25: not rounded, 1
           XRow{1, 52 + 26, 1},  // 1 rest 26: rounded, 3
           XRow{0, 337, 0},      // the one quarter alone
       }) {
    EXPECT_EQ(dialogUnitsX(row.units, row.reference), row.pixels)
        << row.units << " of " << row.reference;
  }
}

// Intended: the height grows by a third and a sixth of the units.
TEST(DialogUnit, VerticalIsHalfAsHighAgain) {
  EXPECT_EQ(dialogUnitsY(4, 12), 6 + 1 + 0);
  EXPECT_EQ(dialogUnitsY(8, 12), 12 + 2 + 1);
  EXPECT_EQ(dialogUnitsY(1, 12), 2);
  EXPECT_EQ(dialogUnitsY(1, 11), 1);
  EXPECT_EQ(dialogUnitsY(114, 12), 171 + 38 + 19);
}

TEST(DialogUnit, WithoutAFontMeasuresByFifteenPixelsACharacter) {
  const zDialogUnit unit(4, 8);
  EXPECT_EQ(unit.width(), dialogUnitsX(4, 52 * 15));
  EXPECT_EQ(unit.height(), dialogUnitsY(8, 15));
  EXPECT_EQ(unit.x(), 4);
  EXPECT_EQ(unit.y(), 8);
}

TEST(PrPoint, UsesTheResolutionOfEachDirection) {
  theScreen().dotsPerInchX = 72;
  theScreen().dotsPerInchY = 144;
  const zDimension pixels = zPrPoint(100, 100);
  EXPECT_EQ(pixels, (zDimension{10, 20}));
  theScreen().dotsPerInchX = theScreen().dotsPerInchY = 0;
}

TEST(DotsPerInch, IsTruncatedAndSurvivesAScreenWithoutSize) {
  EXPECT_EQ(dotsPerInch(1280, 339), 95);
  EXPECT_EQ(dotsPerInch(1024, 271), 95);
  EXPECT_EQ(dotsPerInch(1280, 325), 100);
  EXPECT_EQ(dotsPerInch(1280, 0), 0);
}

}  // namespace
