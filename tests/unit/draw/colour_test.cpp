#include <gtest/gtest.h>

#include "framework/draw/color.h"
#include "framework/draw/draw_obj.h"

// The real headers come second here: that this compiles is half of the test.
#include "framework/draw/x_handles.h"

#include <X11/Intrinsic.h>
#include <X11/Xutil.h>

#include <type_traits>

namespace {

static_assert(std::is_same_v<::Region, _XRegion*> && std::is_same_v<::GC, _XGC*> &&
              std::is_same_v<::Widget, _WidgetRec*> &&
              std::is_same_v<::XtAppContext, _XtAppStruct*> &&
              std::is_same_v<decltype(XEvent::type), int>);

class ColorCache : public testing::Test {
 protected:
  unsigned long pixelOf(zColor colour) { return cache.pixel(colour); }

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
  EXPECT_EQ(colour.x(), (ziXColour{0x1212, 0x3434, 0x5656}));
  for (const zColor& same : {colour, zColor(0x123456), zColor::fromX({0x1212, 0x3434, 0x5656})}) {
    EXPECT_EQ(same, colour);
    EXPECT_EQ(pixelOf(same), 1U);
  }
  // By the server's components, once they are known.
  const zColor almost = zColor::fromX({0x1212, 0x3434, 0x5657});
  EXPECT_EQ(almost, colour);
  EXPECT_EQ(pixelOf(almost), 2U);
  EXPECT_EQ(cache.colourOf(2).x(), almost.x());
  EXPECT_EQ(cache.colourOf(99), kColorBlack) << "without a display";
}

TEST_F(ColorCache, TheTwoHundredFiftySecondColourIsTheNearestOfTheOthers) {
  for (std::uint32_t i = 0; i < 251; ++i) {
    EXPECT_EQ(pixelOf(zColor(i << 8)), i + 1);
  }
  EXPECT_EQ(pixelOf(zColor(0x006401)), 101U);
  EXPECT_EQ(requests, 251);
  EXPECT_EQ(cache.count(), 251U);
}

TEST_F(ColorCache, ARefusedColourIsTheNearestAndTheFirstWinsATie) {
  available = 3;
  zColor between(0x000018);
  EXPECT_EQ(zColorCache([](const ziXColour&) {
              return std::optional<zColorCache::Allocated>();
            }).pixel(between),
            0U);
  std::string pixels;
  // By the sum over the components.
  for (const int rgb : {0x000010, 0x000020, 0x100000, 0x00001A, 0x0C0008, 0x000800, 0x000018}) {
    between = zColor(static_cast<std::uint32_t>(rgb));
    pixels += std::to_string(cache.pixel(between)) + ' ';
  }
  EXPECT_EQ(pixels, "1 2 3 2 3 1 1 ");
  EXPECT_EQ(between.x(), zColor(0x000010).x());
  EXPECT_EQ(cache.count(), 3U);
}

TEST(DrawObjects, WithoutADisplayHaveNoPixelButKnowThemselves) {
  EXPECT_TRUE(zPen(kStockNullPen).isNull());
  EXPECT_TRUE(zPen(kColorBlack, kPenNull).isNull());
  const zPen black(kStockBlackPen);
  EXPECT_TRUE(!black.isNull() && black.isStock() && black.width() == 1);
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
