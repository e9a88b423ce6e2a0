#include <gtest/gtest.h>

#include <vector>

#include "framework/draw/color.h"
#include "framework/draw/draw_obj.h"

namespace {

class ColorCache : public testing::Test {
 protected:
  // A server of 8-bit colours whose pixel is the number of the request, as long as it lasts.
  zColorCache cache{[this](const ziXColour& wanted) -> std::optional<zColorCache::Allocated> {
    ++requests;
    if (requests > available) {
      return std::nullopt;
    }
    return zColorCache::Allocated{static_cast<unsigned long>(requests), wanted};
  }};
  int requests = 0;
  int available = 1000;
};

TEST_F(ColorCache, AsksOnceForAColour) {
  zColor colour(0x123456);
  const unsigned long pixel = cache.pixel(colour);
  EXPECT_TRUE(colour.hasX());
  EXPECT_EQ(colour.x(), (ziXColour{0x1212, 0x3434, 0x5656}));
  zColor again(0x123456);
  EXPECT_EQ(cache.pixel(again), pixel);
  EXPECT_EQ(cache.pixel(colour), pixel);
  zColor fromServer = zColor::fromX({0x1212, 0x3434, 0x5656});
  EXPECT_EQ(cache.pixel(fromServer), pixel);
  EXPECT_EQ(requests, 1);
}

TEST_F(ColorCache, TheTwoHundredFiftySecondColourIsTheNearestOfTheOthers) {
  for (std::uint32_t i = 0; i < zColorCache::kLimit; ++i) {
    zColor colour(i << 8);
    cache.pixel(colour);
  }
  zColor late(0x006401);
  EXPECT_EQ(cache.pixel(late), 101U);
  EXPECT_EQ(requests, 251);
  EXPECT_EQ(cache.count(), 251U);
}

TEST_F(ColorCache, ARefusedColourIsTheNearestAndTheFirstWinsATie) {
  available = 2;
  zColor darker(0x000010);
  zColor lighter(0x000020);
  cache.pixel(darker);
  cache.pixel(lighter);
  zColor between(0x000018);
  EXPECT_EQ(cache.pixel(between), 1U);
  EXPECT_EQ(cache.count(), 2U);
}

TEST_F(ColorCache, WithNoColourAtAllGivesPixelZero) {
  available = 0;
  zColor colour(0xFFFFFF);
  EXPECT_EQ(cache.pixel(colour), 0U);
}

TEST(Color, KeepsRedInTheTopByte) {
  const zColor colour(0xFF112233);
  EXPECT_EQ(colour.rgb(), 0x112233U);
  EXPECT_EQ(colour.red(), 0x11);
  EXPECT_EQ(colour.green(), 0x22);
  EXPECT_EQ(colour.blue(), 0x33);
  EXPECT_EQ(zColor::fromX({0x11FF, 0x2200, 0x3380}), zColor(0x112233));
}

std::vector<int> dashesOf(int style, int width) {
  const ziDashList list = dashList(style, width);
  const auto* first = reinterpret_cast<const unsigned char*>(list.lengths);
  return {first, first + list.count};
}

TEST(Dashes, FollowStyleAndWidth) {
  using Lengths = std::vector<int>;
  EXPECT_EQ(dashesOf(kPenSolid, 2), Lengths());
  EXPECT_EQ(dashesOf(kPenDash, 3), (Lengths{12, 6}));
  EXPECT_EQ(dashesOf(kPenDot, 2), (Lengths{2, 4}));
  EXPECT_EQ(dashesOf(kPenDashDot, 0), (Lengths{8, 3, 2, 3, 8, 3})) << "a width of 0 counts as 1";
  EXPECT_EQ(dashesOf(kPenDashDotDot, 1), (Lengths{8, 3, 2, 3, 2, 3, 8, 3}));
  EXPECT_EQ(dashesOf(kPenNull, 1), Lengths());
  EXPECT_EQ(dashesOf(kPenDash, 1000), (Lengths{255, 255})) << "X takes no more than a byte";
}

TEST(Pen, IsNullByStockOrByStyle) {
  EXPECT_TRUE(zPen(kStockNullPen).isNull());
  EXPECT_TRUE(zPen(kColorBlack, kPenNull).isNull());
  EXPECT_FALSE(zPen(kStockBlackPen).isNull());
  EXPECT_TRUE(zPen(kStockBlackPen).isStock());
  EXPECT_EQ(zPen(kStockWhitePen).colour(), kColorWhite);
  EXPECT_EQ(zPen(kStockWhitePen).width(), 1);
}

TEST(Brush, StockOnesHaveTheirGreysAndTwoAreHollow) {
  EXPECT_EQ(zBrush(kStockWhiteBrush).colour(), kColorWhite);
  EXPECT_EQ(zBrush(kStockLightGreyBrush).colour(), kColorLightGrey);
  EXPECT_EQ(zBrush(kStockGreyBrush).colour(), kColorGrey);
  EXPECT_EQ(zBrush(kStockDarkGreyBrush).colour(), kColorDarkGrey);
  EXPECT_EQ(zBrush(kStockBlackBrush).colour(), kColorBlack);
  EXPECT_TRUE(zBrush(kStockHollowBrush).isHollow());
  EXPECT_TRUE(zBrush(kStockNullBrush).isHollow());
  EXPECT_FALSE(zBrush(kColorBlack).isHollow());
}

}  // namespace
