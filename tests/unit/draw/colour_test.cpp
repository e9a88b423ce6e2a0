#include <gtest/gtest.h>

#include "framework/draw/color.h"
#include "framework/draw/x_handles.h"

namespace {

class ColorCache : public testing::Test {
 protected:
  /// The pixels of some colours, one after the other.
  std::string pixelsOf(std::initializer_list<std::uint32_t> colours) {
    std::string pixels;
    for (const std::uint32_t rgb : colours) {
      zColor colour(rgb);
      pixels += std::to_string(cache.pixel(colour)) + ' ';
    }
    return pixels;
  }

  // A server whose pixel is the number of the request, and that answers as long as it lasts.
  zColorCache cache{[this](const ziXColour& wanted) {
    return ++requests > available ? std::optional<zColorCache::Allocated>()
                                  : zColorCache::Allocated{requests, wanted};
  }};
  unsigned long requests = 0;
  unsigned long available = 1000;
};

TEST_F(ColorCache, AsksOnceForAColour) {
  zColor colour(0x123456);
  EXPECT_EQ(cache.pixel(colour), 1U);
  EXPECT_EQ(colour.x(), (ziXColour{0x1212, 0x3434, 0x5656}));
  EXPECT_EQ(cache.pixel(colour), 1U);
  EXPECT_EQ(pixelsOf({0x123456}), "1 ");
  // By the server's components, once they are known.
  zColor almost = zColor::fromX({0x1212, 0x3434, 0x5657});
  EXPECT_EQ(almost, colour);
  EXPECT_EQ(cache.pixel(almost), 2U);
  EXPECT_EQ(cache.colourOf(2).x(), almost.x());
  EXPECT_EQ(cache.colourOf(99), kColorBlack) << "without a display";
}

TEST_F(ColorCache, ARefusedColourIsTheNearestBySumAndTheFirstWinsATie) {
  EXPECT_EQ(pixelsOf({0x000010, 0x000020, 0x100000}), "1 2 3 ");
  available = 0;
  EXPECT_EQ(pixelsOf({0x00001A, 0x0C0008, 0x000800, 0x000018}), "2 3 1 1 ");
  zColor between(0x000018);
  cache.pixel(between);
  EXPECT_EQ(between.x(), zColor(0x000010).x());
  EXPECT_EQ(zColorCache([](const ziXColour&) {
              return std::optional<zColorCache::Allocated>();
            }).pixel(between),
            0U);
}

TEST_F(ColorCache, TheTwoHundredFiftySecondColourIsNotAskedFor) {
  for (std::uint32_t i = 0; i < 300; ++i) {
    pixelsOf({i << 8});
  }
  EXPECT_EQ(requests, 251U);
}

TEST(Region, IsACopyWithCoordinatesInXsRange) {
  zRegion region(zRect(-100000, 1, 100000, 50));
  const zRegion copy = region;
  region.add({20, 20, 30, 60});
  EXPECT_EQ(region.clipBox(), zRect(-32768, 1, 32767, 60));
  EXPECT_EQ(copy.clipBox(), zRect(-32768, 1, 32767, 50));
  EXPECT_EQ(zRegion(zRect(10, 10, 5, 15)).clipBox(), zRect());
  EXPECT_EQ(zRegion(zRect(10, 10, 15, 5)).clipBox(), zRect());
}

}  // namespace
