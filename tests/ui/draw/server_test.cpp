#include "framework/draw/pictures.h"

#include <algorithm>
#include <optional>

#include "draw_test.h"
#include "framework/draw/font_dict.h"
#include "framework/draw/image/picture.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"
#include "resources/builtin_table.h"

namespace {

TEST_F(DrawTest, PicturesShowTheirColoursAndAskForThoseInUseOnly) {
  display.lock();
  const ziPicture data = decodeBmp(builtInPicture(kResourceBitmap, kBitmapOpen)).picture;
  const zBitmap bitmap{zResId(kBitmapOpen)};
  ASSERT_EQ(bitmap.size(), (zDimension{16, 16}));
  EXPECT_LT(ziDrawCache::instance().colours().count(), 100U) << "of 256 in the table";
  display.drawBitmap(bitmap.pixmap(), kAll, {});
  for (int i = 0; i < 16 * 16; ++i) {
    zColor shown;
    display.getPixel(i % 16, i / 16, shown);
    ASSERT_EQ(shown.rgb(), data.colours[data.at(i % 16, i / 16)]) << i;
  }
}

TEST(Pictures, HaveTheirColoursOnAScreenOfTrueColours) {
  for (const std::uint32_t rgb : {0x000000U, 0xFFFFFFU, 0x12AB7FU, 0xC0C0C0U}) {
    EXPECT_EQ(pixelOf(zColor(rgb)), rgb);
  }
  EXPECT_EQ(zColorCache().colourOf(0x345678), zColor(0x345678)) << "the server tells unknown ones";
}

TEST(Pictures, ThatCannotBeMadeAreEmpty) {
  EXPECT_EQ(zIcon(zResId(98)).pixmap(), 0U);
  EXPECT_TRUE(zBitmap(zResId(2105)).isEmpty());
  zBitmap empty(0, 5);
  EXPECT_FALSE(zBitmapDisplay(empty).isReady());
}

TEST_F(DrawTest, TheMainIconLeavesTheGroundWhereItsMaskDoes) {
  display.lock();
  const zIcon icon{zResId(kIconMain)};
  ASSERT_EQ(icon.size(), (zDimension{32, 32}));
  const std::vector<unsigned long>& pixels = icon.windowManagerPixels();
  ASSERT_EQ(pixels.size(), 2U + 32 * 32);
  for (const zPoint& shift : {zPoint{0, 0}, zPoint{-8, -16}}) {
    display.fillRect(kAll, &yellow);
    display.copyIcon(icon.pixmap(), icon.mask(), icon.size(), shift);
    EXPECT_EQ(takeEvents(), "");
    for (int i = 0; i < kAll.right * kAll.bottom; ++i) {
      const zPoint at{i % kAll.right, i / kAll.right};
      const auto word = static_cast<std::size_t>(2 + 32 * (at.y - shift.y) + at.x - shift.x);
      zColor shown;
      display.getPixel(at.x, at.y, shown);
      ASSERT_EQ(shown.rgb(), pixels[word] == 0 ? kYellow.rgb() : pixels[word] & 0xFFFFFF) << i;
    }
  }
  // Some window managers show it without its mask: on the face colour then, which is no part of
  // the icon itself.
  EXPECT_EQ(std::count(pixels.begin() + 2, pixels.end(), 0xFFC0C0C0U), 0);
  display.drawBitmap(icon.pixmap(), {0, 0, 1, 1}, {});
  EXPECT_EQ(picture({0, 0, 1, 1}), "\n.\n");
}

// The toolkit takes widths from the table, the server draws by its own.
TEST(ServerFonts, BytesWithoutAGlyphHaveTheWidthInWhichTheyAreDrawn) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    bytes += static_cast<char>(byte);
  }
  for (const char* face : {"courier", "fixed", "helvetica"}) {
    const zFont font(zFontSpec(face, {0, 13}, kFontNormal));
    int unused = 0;
    XCharStruct drawn;
    XQueryTextExtents(theScreen().display, font.xFont()->id(), bytes.data(), 256, &unused, &unused,
                      &unused, &drawn);
    EXPECT_EQ(font.measure(bytes.data(), 256).width, drawn.width) << face;
  }
}

// A scaled font costs a penalty of 5: nothing further off is taken, nor another face.
TEST(ServerFonts, AnySizeOfAFaceIsLoadedNearlyInThatSize) {
  for (const int height : {5, 12, 17, 96}) {
    const zFont font(zFontSpec("Courier New", {0, height}, kFontNormal, kPitchFixed));
    EXPECT_STREQ(parseXlfd(font.cacheEntry()->fullName.view())->family.c_str(), "courier");
    EXPECT_NEAR(font.measure("M", 1).height, height, 2 + height / 4);
    EXPECT_EQ(font.pixel(), font.xFont()->id());
  }
}

TEST(ServerFonts, DialogUnitsFollowTheDefaultOneWhichIsTheFirstThatIsThere) {
  ziScreen& screen = theScreen();
  screen.readSize();
  const Screen& real = *DefaultScreenOfDisplay(screen.display);
  EXPECT_EQ(screen.size(), (zDimension{real.width, real.height}));
  EXPECT_EQ(screen.dotsPerInchX, dotsPerInch(real.width, real.mwidth));
  EXPECT_EQ(screen.dotsPerInchY, dotsPerInch(real.height, real.mheight));
  std::optional<zDimension>& kept = ziDrawCache::instance().dialogReference();
  screen.loadDefaultFont("8x16");
  kept.reset();
  const zDimension byDefault{dialogUnitsX(160, 52 * 8), dialogUnitsY(8, 16)};
  EXPECT_EQ(zDialogUnit(160, 8).size(), byDefault);
  screen.loadDefaultFont("no such font");
  EXPECT_EQ(zDialogUnit(160, 8).size(), byDefault) << "measured once";
  const zFont other(
      zFontSpec::fromFullName("-misc-fixed-medium-r-semicondensed--13-120-75-75-c-60-iso8859-1"));
  EXPECT_EQ(zDialogUnit(160, 8, other).size(),
            (zDimension{dialogUnitsX(160, 52 * 6), dialogUnitsY(8, 13)}));
  const auto fallback = ziXFont::load(screen.display, ziScreen::kFallbackFontName);
  EXPECT_EQ(zDialogUnit(160, 8).height(), dialogUnitsY(8, fallback->height())) << "measured anew";
  screen.loadDefaultFont(ziScreen::kDefaultFontName);
}

}  // namespace
