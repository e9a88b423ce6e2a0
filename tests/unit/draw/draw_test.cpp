// Colours, regions, fonts and measures, as far as they need no display.

#include <gtest/gtest.h>

#include <climits>
#include <sstream>

#include "framework/core/resource_values.h"
#include "framework/draw/color.h"
#include "framework/draw/font_dict.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"
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
  available = 0;
  EXPECT_EQ(pixelsOf({0x000018}), "0 ") << "with none to choose from";
  requests = 0;
  available = 3;
  EXPECT_EQ(pixelsOf({0x000010, 0x000020, 0x100000}), "1 2 3 ");
  EXPECT_EQ(pixelsOf({0x00001A, 0x0C0008, 0x000800, 0x000018}), "2 3 1 1 ");
  zColor between(0x000018);
  cache.pixel(between);
  EXPECT_EQ(between.x(), zColor(0x000010).x());
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

/// All that was read of a name, in the order of ziFontDictEntry; "skipped" for none.
std::string read(const std::string& name) {
  const auto entry = parseXlfd(name);
  if (!entry) {
    return "skipped";
  }
  EXPECT_EQ(entry->fullName.view(), name);
  std::ostringstream told;
  told << entry->foundry.str() << ' ' << entry->family.str();
  for (const int number :
       {entry->pitch, entry->averageWidth, entry->pixelSize, entry->pointSize, entry->charSet,
        entry->weight, entry->italic, entry->resolutionX, entry->resolutionY}) {
    told << ' ' << number;
  }
  return told.str() + (entry->isScalable() ? " scalable" : "");
}

TEST(Xlfd, IsReadFieldByFieldWhateverItHolds) {
  // Pitch, average width, pixels, points, set, weight, italic, x, y.
  for (const auto& [name, content] : std::vector<std::pair<std::string, const char*>>{
           {"-a-hv-bold-o-normal--12-120-75-74-p-69-iso8859-1", "a hv 2 69 12 120 0 700 1 75 74"},
           {"--x-MEDIUM-I---1-2-3-4-C-5-ISO8859-1", "* x 1 5 1 2 0 400 1 3 4"},
           {"-a-x-bold-r---1-0-0-0-m-0-iso8859-15", "a x 1 0 1 0 255 700 0 0 0"},
           {"-a-x-bold-i---0-1-0-0-x-0-koi8-1", "a x 2 0 0 1 255 700 1 0 0"},
           {"-a-x-bold-O---0-0-0-0-M-1-iso8859-1", "a x 1 1 0 0 0 700 1 0 0"},
           {"-a-x-bold-r---0-0-75-75-P-0-iso8859-1", "a x 2 0 0 0 0 700 0 75 75 scalable"},
           {"-a-b-bold-r---1-1-1-1-c-1-jisx0208.1983-0", "skipped"},
           {"-a-b-bold-r---1-1-1-1-c-1-ksc5601.1987-0", "skipped"},
           {"", "*  2 0 0 0 255 500 0 0 0 scalable"},
           {std::string(100000, '-'), "*  2 0 0 0 255 500 0 0 0 scalable"},
           {"-a-b-bold-r---99999999999-x-1e9--p-+5-iso8859", "a b 2 0 0 0 255 700 0 1 0 scalable"},
       }) {
    EXPECT_EQ(read(name), content) << name.substr(0, 100);
  }
  std::istringstream weights(
      "UltraLight 100 extralight 200 light 300 semilight 300 medium 400 Regular 400 normal 500 "
      "semibold 600 DEMIBOLD 600 bold 700 extrabold 800 heavy 800 ultrabold 900 black 900 "
      "book 500 bol 500 boldly 500");
  std::string word;
  for (int weight = 0; weights >> word >> weight;) {
    EXPECT_EQ(weightOfWord(word), weight) << word;
  }
  EXPECT_EQ(scaledFontName("-adobe-courier-medium-r-normal--0-1-75-75-m-30-iso8859-1", 12),
            "-adobe-courier-medium-r-normal--12-*-75-75-m-*-iso8859-1");
  EXPECT_EQ(scaledFontName("-1-2-3-4-5-6-7-8-9-10-11-12-13-14-15-16", 9),
            "-1-2-3-4-5-6-9-*-9-10-11-*-13-14-15");
}

std::string fontName(const std::string& family, const std::string& sizes,
                     const std::string& foundry = "adobe") {
  return "-" + foundry + "-" + family + "-normal--" + sizes + "-iso8859-1";
}

// Users write them.
TEST(ResourceValues, HaveLimitsWhateverIsWritten) {
  for (const auto& [text, number] : {std::pair("99999999999999999999", INT_MAX),
                                     {"-3e9", -3},
                                     {"-2147483649", INT_MIN},
                                     {"True", 1},
                                     {"7x", 7},
                                     {"", 0}}) {
    EXPECT_EQ(asNumber(text), number) << text;
  }
  EXPECT_EQ(dialogFontPoints(11, 5), 16);
  EXPECT_EQ(dialogFontPoints(11, INT_MIN), 5);
  EXPECT_EQ(dialogFontPoints(UINT_MAX, INT_MAX), 24);
  const std::string name = "-*-helvetica-bold-r-normal--*-110-*";
  const auto nameOf = [](const zFontSpec& font) { return font.log().faceName.str(); };
  EXPECT_EQ(resolvedPoints("6x13,\n " + name + "=t," + name + ";6x13:," + name, nameOf),
            "6x13,\n helvetica=t," + name + ";6x13:,helvetica");
  theScreen().dotsPerInchY = 72;
  EXPECT_EQ(askedInPoints("-a-b-bold-r-n--*-2147483647-*").value_or(zFontSpec()).log().height, 72);
}

TEST(FontPenalty, IsTheSumOfTheDifferences) {
  const auto penalty = [](const zFontSpec& wanted, const char* family, const char* sizes,
                          bool isHp = false, const char* set = "") {
    return fontPenalty(*parseXlfd(fontName(family, sizes) + set), wanted, {isHp});
  };
  const char* bold = "helvetica-bold-o";
  const zFontSpec plain("Helvetica", {0, 12}, kFontBold, kPitchVariable, true);
  EXPECT_EQ(penalty(plain, bold, "12-120-75-74-p-69"), 0);
  EXPECT_EQ(penalty(plain, "times-bold-o", "12-120-75-75-p-69"), 800);
  EXPECT_EQ(penalty(plain, bold, "12-120-75-75-m-69"), 700);
  EXPECT_EQ(penalty(plain, "helvetica-bold-r", "12-120-75-75-p-69", false, "5"), 1200);
  EXPECT_EQ(penalty(plain, "helvetica-medium-o", "12-120-75-75-p-69"), 130);
  EXPECT_EQ(penalty(plain, "helvetica-black-o", "12-120-75-75-p-69"), 120);
  EXPECT_EQ(penalty(plain, bold, "0-0-0-0-p-0"), 5);
  EXPECT_EQ(penalty(plain, bold, "0-120-75-75-p-0"), 12);
  EXPECT_EQ(penalty(plain, bold, "15-120-75-75-p-69"), 9);
  EXPECT_EQ(penalty(plain, bold, "9-120-75-75-p-69"), 3);
  // Intended: on one vendor's servers the 95-dpi fonts lose.
  EXPECT_EQ(penalty(plain, bold, "12-120-95-95-p-69", true), 7);
  EXPECT_EQ(penalty(plain, bold, "12-120-95-95-p-69"), 0);
  EXPECT_EQ(penalty(plain, bold, "12-120-75-95-p-69", true), 0);
  zFontSpec ofFoundry = plain;
  ofFoundry.log().foundry = "b&h";
  EXPECT_EQ(penalty(ofFoundry, bold, "12-120-75-74-p-69"), 900);
  ofFoundry.log().foundry = "adobe";
  EXPECT_EQ(penalty(ofFoundry, bold, "12-120-75-74-p-69"), 0);
  const zFontSpec exact = zFontSpec::fromFullName(fontName(bold, "12-120-75-74-p-69"));
  EXPECT_EQ(penalty(exact, bold, "12-120-75-74-p-69"), 0);
  EXPECT_EQ(penalty(exact, bold, "12-120-75-75-p-69"), 5);
  EXPECT_EQ(penalty(exact, bold, "11-120-75-75-p-69"), 1);
}

class FontDict : public testing::Test {
 protected:
  void add(const char* sizes, const char* foundry = "adobe") {
    dict.addName(fontName("helvetica-bold-r", sizes, foundry));
  }

  // No server here: no font can be loaded, but what is asked for is seen, without what all names
  // have in common.
  ziXFontDict dict{1, {}, [this](const std::string& name) {
                     loaded += (name.size() > 50 ? name.substr(32, name.size() - 42) : name) + '|';
                     return std::unique_ptr<ziXFont>();
                   }};
  std::string loaded;
  zFontSpec spec{"helvetica", {0, 12}};
};

TEST_F(FontDict, AnEqualRequestGivesTheSameEntryAndLoadsOnce) {
  add("12-120-75-75-p-70");
  const ziFontCacheEntry* entry = dict.realize(spec);
  ASSERT_NE(entry, nullptr);
  const std::string once = loaded;
  EXPECT_EQ(dict.realize(spec), entry);
  // The request as the font reports it, its width filled in by the point size.
  EXPECT_EQ(entry->spec.log().width, 120);
  EXPECT_EQ(dict.realize(entry->spec), entry);
  EXPECT_EQ(loaded, once);
  spec.log().width = 7;
  EXPECT_EQ(dict.realize(spec)->spec.log().width, 7);
}

// A server may list what it refuses. Of equals the first comes first.
TEST_F(FontDict, TriesTheNextBestAndAtLastTheDefaultFonts) {
  for (const char* sizes : {"0-0-0-0-p-0", "14-140-75-75-p-70", "13-100-75-75-p-60",
                            "11-100-75-75-p-62", "11-100-75-75-p-60"}) {
    add(sizes);
  }
  dict.addName("-a-b-bold-r---1-1-1-1-c-1-jisx0208.1983-0");
  add("12-100-75-75-p-60", "other");
  add("30000-1-75-75-p-60");  // beyond the worst penalty
  dict.realize(spec);
  EXPECT_EQ(loaded,
            "12-100-75-75-p-60|11-100-75-75-p-62|11-100-75-75-p-60|13-100-75-75-p-60|"
            "12-*-0-0-p-*|14-140-75-75-p-70||" +
                std::string(ziScreen::kFallbackFontName) + "|fixed|");
  loaded.clear();
  dict.realize(zFontSpec::fromFullName(fontName("helvetica-bold-r", "0-0-0-0-p-0")));
  EXPECT_EQ(loaded.substr(0, 12), "0-0-0-0-p-0|") << "not scaled where the name is given";
}

TEST(Font, FacesFollowTheMapAndTheStockNumber) {
  std::string mapped;
  for (const char* face :
       {"Helv", "arial", "COURIER NEW", "Modern", "Roman", "small fonts", "MS Serif",
        "MS Sans Serif", "Tms Rmn", "Times New Roman", "System", "FixedSys", "Lucida", "Aria"}) {
    mapped += mapFaceName(face).str() + ' ';
  }
  EXPECT_EQ(mapped,
            "helvetica helvetica courier helvetica Times fixed Times helvetica Times Times "
            "helvetica fixed Lucida Aria ");
  const zFont font(zFontSpec("Arial", {0, 9}));
  EXPECT_STREQ(font.spec().log().faceName.c_str(), "helvetica");
  ziDrawCache::destroy();  // fonts may outlive it
  theScreen().dotsPerInchX = theScreen().dotsPerInchY = 72;
  // Intended: only 10 to 14 go through the face map.
  const zFontSpec fixed("fixed", {11, 11}, kFontBold, kPitchFixed);
  const zFontSpec system("helvetica", {11, 11}, kFontBold);
  const zFontSpec other("FixedSys", {11, 11}, kFontBold, kPitchFixed);
  EXPECT_TRUE(zFontSpec::stock(9) == other && zFontSpec::stock(15) == other);
  EXPECT_TRUE(zFontSpec::stock(10) == fixed && zFontSpec::stock(11) == fixed);
  EXPECT_TRUE(zFontSpec::stock(12) == system && zFontSpec::stock(14) == system);
}

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
  theScreen().dotsPerInchX = 72;
  theScreen().dotsPerInchY = 144;
  EXPECT_EQ(zPrPoint(100, 100).size(), (zDimension{10, 20}));
  // Without a font, fifteen pixels a character.
  EXPECT_EQ(zDialogUnit(4, 8).size(), (zDimension{dialogUnitsX(4, 52 * 15), dialogUnitsY(8, 15)}));
}

}  // namespace
