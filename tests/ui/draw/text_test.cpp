#include <optional>

#include "draw_test.h"
#include "framework/draw/font_dict.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

namespace {

// The letters of "fixed" are 6 by 13 pixels and the same on all servers.
TEST_F(DrawTest, TextIsDrawnFromItsTopLeftCornerOnTheWindowsGroundUnlessTransparent) {
  font = zRCFont(
      zFontSpec::fromFullName("-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-iso8859-1"));
  display.lock();
  display.fillRect(kAll, &yellow);
  display.setOrigin({1, 1});
  EXPECT_EQ(display.text(0, 0, "TL!", 2), kDrawn);
  EXPECT_EQ(display.text(0, 0, nullptr), kDrawn);
  EXPECT_EQ(display.setTextColour(kRed), kColorBlack);
  display.setTextMode(kTextTransparent);
  display.text(15, 2, "T");
  EXPECT_EQ(picture(), R"(
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
  display.text(15, 0, "T", 0);
  EXPECT_EQ(picture({15, 0, 23, 7}), R"(
yyyyyyyy
ywwwwwwy *2
ybbbbbwy
ywwbwwwy *3
)");
  zDimension size;
  display.textSize(size, "abc");
  EXPECT_EQ(size, (zDimension{18, 13}));
  display.textSize(size, "abc", 2);
  EXPECT_EQ(size, (zDimension{12, 13}));
  display.textSize(size, nullptr);
  EXPECT_EQ(size, (zDimension{0, kFallbackCharSize}));
}

TEST_F(DrawTest, ANewFontIsDrawnWithAtOnce) {
  EXPECT_EQ(display.fontObject()->stockNumber(), 14) << "that of a window without a font";
  font = zRCFont(zFontSpec("courier", {0, 12}, kFontRegular, kPitchFixed));
  display.lock();
  EXPECT_STREQ(display.fontSpec().log().faceName.c_str(), "courier");
  const auto drawn = [this] {
    display.fillRect(kAll, &yellow);
    display.text(0, 0, "W");
    return picture();
  };
  const std::string before = drawn();
  display.setFont(zRCFont(zFontSpec("helvetica", {0, 14})));
  EXPECT_NE(drawn(), before);
}

// The toolkit takes widths from the table, the server draws by its own.
TEST(ServerFonts, AByteWithoutAGlyphHasTheWidthInWhichItIsDrawn) {
  for (const char* face : {"courier", "fixed", "helvetica"}) {
    const zFont font(zFontSpec(face, {0, 13}, kFontNormal));
    const XFontStruct& loaded = *font.xFont()->get();
    const char* blank = reinterpret_cast<const char*>(&loaded.default_char);
    for (unsigned byte = 0; byte < 256; ++byte) {
      const char text = static_cast<char>(byte);
      int unused = 0;
      XCharStruct drawn;
      XQueryTextExtents(theScreen().display, loaded.fid, &text, 1, &unused, &unused, &unused,
                        &drawn);
      const int shown = drawn.width != 0 ? drawn.width : font.measure(blank, 1).width;
      EXPECT_EQ(font.measure(&text, 1).width, shown) << face << ' ' << byte;
    }
  }
}

// A scaled font costs a penalty of 5: nothing further off is taken, nor another face.
TEST(ServerFonts, AnySizeOfAFaceIsLoadedNearlyInThatSize) {
  for (const int height : {5, 12, 17, 96}) {
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
  std::optional<zDimension>& kept = ziDrawCache::instance().dialogReference();
  kept.reset();
  const zDimension byDefault{dialogUnitsX(160, font.textWidth(kDialogUnitText, 52)),
                             dialogUnitsY(8, font.height())};
  EXPECT_EQ(zDialogUnit(160, 8).size(), byDefault);
  kept = zDimension{1, 1};
  EXPECT_EQ(zDialogUnit(160, 8).size(), (zDimension{dialogUnitsX(160, 1), dialogUnitsY(8, 1)}));
  const zFont large(zFontSpec("helvetica", {0, 24}));
  EXPECT_EQ(zDialogUnit(52, 8, large).width(),
            dialogUnitsX(52, large.measure(kDialogUnitText, 52).width));
  EXPECT_EQ(zDialogUnit(160, 8).size(), byDefault) << "that of the default font is measured anew";
}

TEST(DefaultFont, IsTheFirstOfItsNamesThatTheServerHas) {
  ziScreen screen;
  screen.display = theScreen().display;
  const auto heightOf = [&screen](const char* name) {
    screen.loadDefaultFont(name);
    return screen.defaultFont->height();
  };
  EXPECT_EQ(heightOf("no such font"), heightOf(ziScreen::kFallbackFontName));
  EXPECT_EQ(heightOf("8x16"), 16);
}

}  // namespace
