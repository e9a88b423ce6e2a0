#include <gtest/gtest.h>

#include "framework/draw/color.h"
#include "framework/draw/draw_obj.h"

// The real headers come second here: that this compiles is half of the test.
#include "framework/draw/x_handles.h"

#include <X11/Intrinsic.h>
#include <X11/Xutil.h>

#include <type_traits>

namespace {

static_assert(std::is_same_v<::Region, _XRegion*>);
static_assert(std::is_same_v<::GC, _XGC*>);
static_assert(std::is_same_v<::Widget, _WidgetRec*>);
static_assert(std::is_same_v<::XtAppContext, _XtAppStruct*>);
static_assert(std::is_same_v<decltype(XEvent::type), int>);

class ColorCache : public testing::Test {
 protected:
  unsigned long pixelOf(std::uint32_t rgb) {
    zColor colour(rgb);
    return cache.pixel(colour);
  }

  // A server whose pixel is the number of the request, and that answers as long as it lasts.
  zColorCache cache{[this](const ziXColour& wanted) -> std::optional<zColorCache::Allocated> {
    if (++requests > available) {
      return std::nullopt;
    }
    return zColorCache::Allocated{static_cast<unsigned long>(requests), wanted};
  }};
  int requests = 0;
  int available = 1000;
};

TEST_F(ColorCache, AsksOnceForAColour) {
  zColor colour(0x123456);
  EXPECT_EQ(cache.pixel(colour), 1U);
  EXPECT_TRUE(colour.hasX());
  EXPECT_EQ(colour.x(), (ziXColour{0x1212, 0x3434, 0x5656}));
  EXPECT_EQ(pixelOf(0x123456), 1U);
  EXPECT_EQ(cache.pixel(colour), 1U);
  zColor fromServer = zColor::fromX({0x1212, 0x3434, 0x5656});
  EXPECT_EQ(fromServer, colour);
  EXPECT_EQ(cache.pixel(fromServer), 1U);
  // By the server's components, once they are known.
  zColor almost = zColor::fromX({0x1212, 0x3434, 0x5657});
  EXPECT_EQ(almost, colour);
  EXPECT_EQ(cache.pixel(almost), 2U);
  EXPECT_EQ(cache.colourOf(2).x(), almost.x());
  EXPECT_EQ(cache.colourOf(99), kColorBlack) << "without a display";
}

TEST_F(ColorCache, TheTwoHundredFiftySecondColourIsTheNearestOfTheOthers) {
  for (std::uint32_t i = 0; i < 251; ++i) {
    EXPECT_EQ(pixelOf(i << 8), i + 1);
  }
  EXPECT_EQ(pixelOf(0x006401), 101U);
  EXPECT_EQ(requests, 251);
  EXPECT_EQ(cache.count(), 251U);
}

TEST_F(ColorCache, ARefusedColourIsTheNearestAndTheFirstWinsATie) {
  available = 3;
  EXPECT_EQ(pixelOf(0x000010), 1U);
  EXPECT_EQ(pixelOf(0x000020), 2U);
  EXPECT_EQ(pixelOf(0x100000), 3U);
  zColor between(0x000018);
  EXPECT_EQ(cache.pixel(between), 1U);
  EXPECT_EQ(between.x(), zColor(0x000010).x());
  EXPECT_EQ(pixelOf(0x00001A), 2U);
  EXPECT_EQ(pixelOf(0x0C0008), 3U) << "by the sum over the components";
  EXPECT_EQ(pixelOf(0x000800), 1U);
  EXPECT_EQ(cache.count(), 3U);
  available = 0;
  zColorCache empty([](const ziXColour&) { return std::optional<zColorCache::Allocated>(); });
  EXPECT_EQ(empty.pixel(between), 0U);
}

TEST(DrawObjects, WithoutADisplayHaveNoPixelButKnowThemselves) {
  EXPECT_TRUE(zPen(kStockNullPen).isNull());
  EXPECT_TRUE(zPen(kColorBlack, kPenNull).isNull());
  const zPen black(kStockBlackPen);
  EXPECT_FALSE(black.isNull());
  EXPECT_TRUE(black.isStock());
  EXPECT_EQ(black.width(), 1);
  EXPECT_EQ(black.colour(), kColorBlack);
  EXPECT_EQ(zPen(kStockWhitePen).colour(), kColorWhite);
  EXPECT_FALSE(zBrush(kColorBlack).isHollow());
  EXPECT_EQ(zBrush(kColorWhite).pixel(), 0U);
}

TEST(Region, AddsIntersectsAndPullsCoordinatesIntoXsRange) {
  zRegion first(zRect(0, 0, 10, 10));
  const zRegion copy = first;
  first.add({20, 20, 30, 40});
  EXPECT_EQ(first.clipBox(), zRect(0, 0, 30, 40));
  EXPECT_EQ(copy.clipBox(), zRect(0, 0, 10, 10));
  first.intersect(zRegion(zRect(5, 5, 25, 25)));
  EXPECT_EQ(first.clipBox(), zRect(5, 5, 25, 25));
  first.intersect(zRegion(zRect(11, 11, 19, 19)));
  EXPECT_EQ(first.clipBox(), zRect()) << "between its parts";
  EXPECT_EQ(zRegion(zRect(-100000, 1, 100000, 50)).clipBox(), zRect(-32768, 1, 32767, 50));
  EXPECT_EQ(zRegion(zRect(10, 10, 5, 15)).clipBox(), zRect());
  EXPECT_EQ(zRegion(zRect(10, 10, 15, 5)).clipBox(), zRect());
}

}  // namespace
