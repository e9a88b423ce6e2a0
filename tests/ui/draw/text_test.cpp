#include <gtest/gtest.h>

#include <string_view>

#include "fake_pane.h"
#include "framework/draw/extra/font_info.h"
#include "framework/draw/font_dict.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

namespace {

constexpr std::uint32_t kRed = 0xFF0000;
constexpr std::uint32_t kYellow = 0xFFFF00;
constexpr std::uint32_t kGround = FakePane::kBackground;

class Text : public testing::Test {
 protected:
  Text() { pane.makeReady(display); }
  ~Text() override { display.unlock(); }

  zDimension sizeOf(const char* text, int length = kWholeText) {
    zDimension size;
    display.textSize(size, text, length);
    return size;
  }
  int drawn(std::uint32_t colour) const { return pane.count({0, 0, 100, 80}, colour); }

  FakePane pane;
  zWinDisplay display{pane};
};

TEST_F(Text, FillsItsExtentWithTheWindowsBackgroundUnlessTransparent) {
  display.lock();
  zBrush yellow{zColor(kYellow)};
  display.fillRect({0, 0, 100, 80}, &yellow);
  EXPECT_EQ(display.setTextColour(zColor(kRed)), kColorBlack);
  const zDimension size = sizeOf("Mg");
  display.text(10, 20, "Mg");
  const zRect extent({10, 20}, size);
  const int inked = drawn(kRed);
  EXPECT_GT(inked, 0);
  EXPECT_EQ(pane.count(extent, kRed), inked) << "nothing outside the extent";
  EXPECT_EQ(drawn(kGround), size.width * size.height - inked);

  display.fillRect({0, 0, 100, 80}, &yellow);
  display.setTextMode(kTextTransparent);
  display.text(10, 20, "Mg");
  EXPECT_EQ(drawn(kRed), inked);
  EXPECT_EQ(drawn(kGround), 0);

  display.setTextMode(kTextOpaque);
  EXPECT_EQ(display.setBackColour(kColorWhite).rgb(), kGround);
  display.text(10, 20, "Mg");
  EXPECT_EQ(drawn(0xFFFFFF), size.width * size.height - inked);
}

TEST_F(Text, ALengthOfZeroOrAllMeansUpToTheEnd) {
  display.lock();
  EXPECT_EQ(display.fontObject()->stockNumber(), 14) << "that of a window without a font";
  EXPECT_EQ(sizeOf("abc", 0), sizeOf("abc", 3));
  EXPECT_EQ(sizeOf("abc"), sizeOf("abc", 3));
  EXPECT_LT(sizeOf("abc", 1).width, sizeOf("abc", 2).width);
  EXPECT_EQ(sizeOf("").width, 0);
}

// Intended: a text that leaves no room at one side is moved by one pixel.
TEST_F(Text, CentringMovesByAtLeastOnePixel) {
  display.lock();
  display.setTextColour(zColor(kRed));
  const zDimension size = sizeOf("M");
  display.setTextMode(kTextOpaque);
  display.setBackColour(zColor(kYellow));
  display.centerText({{10, 10}, size}, "M");
  EXPECT_NE(pane.at(11, 11), kGround);
  EXPECT_EQ(pane.at(10, 10), kGround);
  display.centerText({{40, 40}, {size.width + 10, size.height + 21}}, "M");
  EXPECT_EQ(pane.at(45, 49), kGround);
  EXPECT_NE(pane.at(45, 50), kGround);
  EXPECT_EQ(pane.at(44, 50), kGround);
}

TEST_F(Text, TheWindowsFontIsTheBaseOfThePushedOnes) {
  pane.font = zRCFont(zFontSpec("courier", {0, 20}, kFontRegular, kPitchFixed));
  display.lock();
  EXPECT_STREQ(display.fontSpec().log().faceName.c_str(), "courier");
  const zDimension before = sizeOf("iM");
  display.pushFont(zFontSpec("helvetica", {0, 10}));
  const zDimension pushed = sizeOf("iM");
  EXPECT_LT(pushed.height, before.height);
  display.popFont();
  EXPECT_EQ(sizeOf("iM"), before);
  display.popFont();
  EXPECT_EQ(sizeOf("iM"), before) << "there is always a font";
}

TEST(ServerFonts, StockFontsAreElevenPointsAndShared) {
  const zFont system(12);
  ASSERT_NE(system.xFont(), nullptr);
  EXPECT_EQ(system.spec().log().height, zPrPoint(110, 110).height());
  EXPECT_EQ(zFont(13).cacheEntry(), system.cacheEntry());
  EXPECT_EQ(system.pixel(), system.cacheEntry()->fontId);
  const zFont fixed(11);
  ASSERT_NE(fixed.xFont(), nullptr);
  EXPECT_TRUE(zFontInfo(fixed).isFixedPitch);
  EXPECT_FALSE(zFontInfo(system).isFixedPitch);
}

// The toolkit takes widths from the table, the server draws by its own.
TEST(ServerFonts, AByteWithoutAGlyphHasTheWidthInWhichItIsDrawn) {
  for (const char* face : {"courier", "fixed", "helvetica"}) {
    const zFont font(zFontSpec(face, {0, 13}, kFontNormal));
    const XFontStruct& loaded = *font.xFont()->get();
    for (unsigned byte = 0; byte < 256; ++byte) {
      const char text = static_cast<char>(byte);
      EXPECT_GT(loaded.per_char[byte].width, 0) << face << ' ' << byte;
      EXPECT_EQ(loaded.per_char[byte].width, font.measure(&text, 1).width) << face << ' ' << byte;
    }
  }
}

TEST(ServerFonts, AFontIsLoadedForEachSizeOfAFaceAndGrowsWithIt) {
  int lastWidth = 0;
  for (int height = 5; height <= 96; ++height) {
    const zFont font(zFontSpec("Courier New", {0, height}, kFontNormal, kPitchFixed));
    ASSERT_NE(font.xFont(), nullptr) << height;
    const zFontDescript loaded(font);
    EXPECT_TRUE(loaded.fullName.view().find("courier") != std::string_view::npos);
    const int tolerance = 2 + height / 4;
    EXPECT_NEAR(loaded.height(), height, tolerance) << loaded.fullName.c_str();
    const int width = font.measure("M", 1).width;
    EXPECT_GE(width, lastWidth) << loaded.fullName.c_str();
    lastWidth = width;
  }
}

TEST(DefaultFont, DialogUnitsFollowItAndKeepItsMeasure) {
  ASSERT_NE(theScreen().defaultFont, nullptr);
  ziDrawCache::instance().dialogReference().reset();
  const zDialogUnit byDefault(160, 8);
  const auto reference = ziDrawCache::instance().dialogReference();
  ASSERT_TRUE(reference.has_value());
  EXPECT_EQ(byDefault.width(), dialogUnitsX(160, reference->width));
  EXPECT_EQ(byDefault.height(), dialogUnitsY(8, reference->height));

  const zFont large(zFontSpec("helvetica", {0, 24}));
  EXPECT_GT(zDialogUnit(160, 8, large).width(), byDefault.width());
  EXPECT_FALSE(ziDrawCache::instance().dialogReference().has_value());
  ziInfoDisplay measuring;
  measuring.setFont(zRCFont(large.spec()));
  EXPECT_EQ(zDialogUnit(160, 8, measuring).size(), zDialogUnit(160, 8, large).size());
}

}  // namespace
