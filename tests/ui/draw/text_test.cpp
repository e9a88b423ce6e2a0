#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "fake_pane.h"
#include "framework/draw/font_dict.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

namespace {

class Text : public testing::Test {
 protected:
  Text() { pane.makeReady(display); }
  ~Text() override { display.unlock(); }

  FakePane pane;
  zWinDisplay display{pane};
};

// The letters of "fixed" are 6 by 13 pixels and the same on all servers.
TEST_F(Text, IsDrawnFromItsTopLeftCornerOnTheWindowsGroundUnlessTransparent) {
  pane.font = zRCFont(
      zFontSpec::fromFullName("-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-iso8859-1"));
  display.lock();
  zBrush yellow(kYellow);
  display.fillRect(FakePane::kAll, &yellow);
  display.setOrigin({1, 1});
  EXPECT_EQ(display.text(0, 0, "TL!", 2), kDrawn);
  EXPECT_EQ(display.text(0, 0, nullptr), kDrawn);
  EXPECT_EQ(display.setTextColour(kRed), kColorBlack);
  display.setTextMode(kTextTransparent);
  display.text(15, 2, "T");
  EXPECT_EQ(pane.picture(), R"(
yyyyyyyyyyyyyyyyyyyyyyyy
y............yyyyyyyyyyy *2
y#####.#.....yyyyyyyyyyy
y..#...#.....yyyyyyyyyyy
y..#...#.....yyyrrrrryyy
y..#...#.....yyyyyryyyyy *5
y..#...#####.yyyyyryyyyy
y............yyyyyryyyyy *2
yyyyyyyyyyyyyyyyyyyyyyyy *2
)");
  display.setTextMode(kTextOpaque);
  EXPECT_EQ(display.setBackColour(kColorWhite), kColorLightGrey);
  EXPECT_EQ(display.setTextColour(kBlue), kRed);
  display.text(15, 0, "T");
  EXPECT_EQ(pane.picture({15, 0, 23, 7}), R"(
yyyyyyyy
ywwwwwwy *2
ybbbbbwy
ywwbwwwy *3
)");
}

TEST_F(Text, ALengthOfZeroOrAllMeansUpToTheEnd) {
  display.lock();
  const auto sizeOf = [&](const char* text, int length = kWholeText) {
    zDimension size;
    display.textSize(size, text, length);
    return size;
  };
  EXPECT_EQ(display.fontObject()->stockNumber(), 14) << "that of a window without a font";
  EXPECT_EQ(sizeOf("abc", 0), sizeOf("abc", 3));
  EXPECT_EQ(sizeOf("abc"), sizeOf("abc", 3));
  EXPECT_LT(sizeOf("abc", 1).width, sizeOf("abc", 2).width);
  EXPECT_EQ(sizeOf("").width, 0);
  EXPECT_EQ(sizeOf(nullptr), (zDimension{0, kFallbackCharSize}));
}

TEST_F(Text, ANewFontOfTheWindowIsDrawnWithAtOnce) {
  pane.font = zRCFont(zFontSpec("courier", {0, 12}, kFontRegular, kPitchFixed));
  display.lock();
  EXPECT_STREQ(display.fontSpec().log().faceName.c_str(), "courier");
  const auto drawn = [this] {
    zBrush ground(kColorLightGrey);
    display.fillRect(FakePane::kAll, &ground);
    display.text(0, 0, "W");
    return pane.picture();
  };
  const std::string before = drawn();
  const zRCFont large(zFontSpec("helvetica", {0, 14}));
  display.setFont(large);
  EXPECT_EQ(display.fontObject(), large.font());
  const std::string after = drawn();
  EXPECT_NE(before, after);
  display.unlock();
  pane.font = zRCFont(10);
  display.lock();
  EXPECT_EQ(drawn(), after) << "the window's font counts at the first lock only";
}

TEST(ServerFonts, StockFontsAreElevenPointsAndShared) {
  const zFont system(12);
  ASSERT_NE(system.xFont(), nullptr);
  EXPECT_EQ(system.spec().log().height, zPrPoint(110, 110).height());
  EXPECT_EQ(zFont(13).cacheEntry(), system.cacheEntry());
  EXPECT_EQ(system.pixel(), system.cacheEntry()->fontId);
  EXPECT_EQ(system.pixel(), system.xFont()->id());
}

// The toolkit takes widths from the table, the server draws by its own.
TEST(ServerFonts, AByteWithoutAGlyphHasTheWidthInWhichItIsDrawn) {
  for (const char* face : {"courier", "fixed", "helvetica"}) {
    const zFont font(zFontSpec(face, {0, 13}, kFontNormal));
    const XFontStruct& loaded = *font.xFont()->get();
    XCharStruct drawn;
    for (unsigned byte = 0; byte < 256; ++byte) {
      const char text = static_cast<char>(byte);
      int unused = 0;
      XQueryTextExtents(theScreen().display, loaded.fid, &text, 1, &unused, &unused, &unused,
                        &drawn);
      const char* blank = reinterpret_cast<const char*>(&loaded.default_char);
      const int shown = drawn.width != 0 ? drawn.width : font.measure(blank, 1).width;
      EXPECT_EQ(loaded.per_char[byte].width, shown) << face << ' ' << byte;
      EXPECT_EQ(font.measure(&text, 1).width, shown) << face << ' ' << byte;
    }
  }
}

// A scaled font costs a penalty of 5: nothing further off is taken, nor another face.
TEST(ServerFonts, EverySizeOfAFaceIsLoadedNearlyInThatSize) {
  for (int height = 5; height <= 96; ++height) {
    const zFont font(zFontSpec("Courier New", {0, height}, kFontNormal, kPitchFixed));
    ASSERT_NE(font.xFont(), nullptr) << height;
    const auto name = parseXlfd(font.cacheEntry()->fullName.view());
    EXPECT_STREQ(name->family.c_str(), "courier");
    EXPECT_NEAR(name->pixelSize, height, 5);
    EXPECT_NEAR(font.measure("M", 1).height, height, 2 + height / 4);
  }
}

TEST(DefaultFont, DialogUnitsFollowItAndKeepItsMeasure) {
  const ziXFont& font = *theScreen().defaultFont;
  ziDrawCache::instance().dialogReference().reset();
  const zDimension byDefault = zDialogUnit(160, 8);
  EXPECT_EQ(byDefault, (zDimension{dialogUnitsX(160, font.textWidth(kDialogUnitText, 52)),
                                   dialogUnitsY(8, font.height())}));
  ziDrawCache::instance().dialogReference() = zDimension{1, 1};
  EXPECT_EQ(zDialogUnit(160, 8).size(), (zDimension{dialogUnitsX(160, 1), dialogUnitsY(8, 1)}));

  const zFont large(zFontSpec("helvetica", {0, 24}));
  EXPECT_EQ(zDialogUnit(52, 8, large).width(),
            dialogUnitsX(52, large.measure(kDialogUnitText, 52).width));
  EXPECT_EQ(zDialogUnit(160, 8).size(), byDefault) << "that of the default font is measured anew";
}

TEST(DefaultFont, IsTheFirstOfItsNamesThatTheServerHas) {
  ziScreen screen;
  screen.display = theScreen().display;
  screen.loadDefaultFont("no such font");
  EXPECT_EQ(screen.lastFontNames(),
            (std::array<std::string, 3>{"no such font", ziScreen::kFallbackFontName, "fixed"}));
  ASSERT_NE(screen.defaultFont, nullptr);
  EXPECT_EQ(screen.defaultFont->height(),
            ziXFont::load(screen.display, ziScreen::kFallbackFontName)->height());
  screen.readSize();
  EXPECT_EQ(screen.screenWidth, theScreen().screenWidth);
  EXPECT_EQ(screen.dotsPerInchX, dotsPerInch(screen.screenWidth, screen.screenWidthMM));
  EXPECT_EQ(screen.dotsPerInchY, dotsPerInch(screen.screenHeight, screen.screenHeightMM));
}

}  // namespace
