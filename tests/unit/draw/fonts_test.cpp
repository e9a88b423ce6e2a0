#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "framework/draw/font_dict.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

namespace {

using testing::ElementsAre;

constexpr const char* kHelvetica = "-adobe-helvetica-bold-o-normal--12-120-75-74-p-69-iso8859-1";

/// All that was read of a name, in the order of ziFontDictEntry; "skipped" for none.
std::string read(const std::string& name) {
  const auto entry = parseXlfd(name);
  if (!entry) {
    return "skipped";
  }
  EXPECT_EQ(entry->fullName.view(), name);
  std::string text = entry->foundry.str() + ' ' + entry->family.str();
  for (const int number :
       {entry->pitch, entry->averageWidth, entry->pixelSize, entry->pointSize, entry->charSet,
        entry->weight, entry->italic, entry->resolutionX, entry->resolutionY}) {
    text += ' ' + std::to_string(number);
  }
  return text + (entry->isScalable() ? " scalable" : "");
}

TEST(Xlfd, IsReadFieldByFieldWhateverItHolds) {
  struct Row {
    std::string name;
    const char* content;  ///< pitch, average width, pixels, points, set, weight, italic, x, y
  };
  for (const Row& row : {
           Row{kHelvetica, "adobe helvetica 2 69 12 120 0 700 1 75 74"},
           {"--x-MEDIUM-I---1-2-3-4-C-5-ISO8859-1", "* x 1 5 1 2 0 400 1 3 4"},
           {"-a-x-bold-r---1-0-0-0-m-0-iso8859-15", "a x 1 0 1 0 255 700 0 0 0"},
           {"-a-x-bold-i---0-1-0-0-x-0-koi8-1", "a x 2 0 0 1 255 700 1 0 0"},
           {"-a-x-bold-O---0-0-0-0-M-1-iso8859-1", "a x 1 1 0 0 0 700 1 0 0"},
           {"-a-x-bold-r---0-0-75-75-P-0-iso8859-1", "a x 2 0 0 0 0 700 0 75 75 scalable"},
           {"-a-b-bold-r---1-1-1-1-c-1-jisx0208.1983-0", "skipped"},
           {"-a-b-bold-r---1-1-1-1-c-1-ksc5601.1987-0", "skipped"},
           {"", "*  2 0 0 0 255 500 0 0 0 scalable"},
           {"no dashes", "no dashes  2 0 0 0 255 500 0 0 0 scalable"},
           {std::string(100000, '-'), "*  2 0 0 0 255 500 0 0 0 scalable"},
           {"-a-b-bold-r---99999999999-x-1e9--p-+5-iso8859", "a b 2 0 0 0 255 700 0 1 0 scalable"},
       }) {
    EXPECT_EQ(read(row.name), row.content) << row.name.substr(0, 100);
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
  EXPECT_EQ(scaledFontName("-a-b", 12), "-a-b");
}

TEST(Penalty, IsTheSumOfTheDifferences) {
  const zFontSpec plain("Helvetica", {0, 12}, kFontBold, kPitchVariable, true);
  zFontSpec bh = plain;
  bh.log().foundry = "b&h";
  zFontSpec adobe = plain;
  adobe.log().foundry = "adobe";
  const zFontSpec exact = zFontSpec::fromFullName(kHelvetica);
  struct Row {
    const zFontSpec& wanted;
    const char* name;  ///< behind "-adobe-" and before "-iso8859-"
    int penalty;
    bool isHp = false;
    char set = '1';
  };
  for (const Row& row : {
           Row{plain, "helvetica-bold-o-normal--12-120-75-74-p-69", 0},
           {plain, "times-bold-o-normal--12-120-75-75-p-69", 800},
           {plain, "helvetica-bold-o-normal--12-120-75-75-m-69", 700},
           {plain, "helvetica-bold-r-normal--12-120-75-75-p-69", 1200, false, '2'},
           {plain, "helvetica-medium-o-normal--12-120-75-75-p-69", 130},
           {plain, "helvetica-black-o-normal--12-120-75-75-p-69", 120},
           {plain, "helvetica-bold-o-normal--0-0-0-0-p-0", 5},
           {plain, "helvetica-bold-o-normal--0-120-75-75-p-0", 12},
           {plain, "helvetica-bold-o-normal--15-120-75-75-p-69", 9},
           {plain, "helvetica-bold-o-normal--9-120-75-75-p-69", 3},
           {bh, "helvetica-bold-o-normal--12-120-75-74-p-69", 900},
           {adobe, "helvetica-bold-o-normal--12-120-75-74-p-69", 0},
           // Intended: on one vendor's servers the 95-dpi fonts lose.
           {plain, "helvetica-bold-o-normal--12-120-95-95-p-69", 7, true},
           {plain, "helvetica-bold-o-normal--12-120-95-95-p-69", 0},
           {plain, "helvetica-bold-o-normal--12-120-95-75-p-69", 0, true},
           {plain, "helvetica-bold-o-normal--12-120-75-95-p-69", 0, true},
           {exact, "helvetica-bold-o-normal--12-120-75-74-p-69", 0},
           {exact, "helvetica-bold-o-condensed--12-120-75-75-p-69", 5},
           {exact, "helvetica-bold-o-normal--11-120-75-75-p-69", 1},
       }) {
    const auto font = parseXlfd("-adobe-" + std::string(row.name) + "-iso8859-" + row.set);
    EXPECT_EQ(fontPenalty(*font, row.wanted, {row.isHp}), row.penalty) << row.name;
  }
}

std::string helvetica(const std::string& sizes, const std::string& foundry = "adobe") {
  return "-" + foundry + "-helvetica-bold-r-normal--" + sizes + "-iso8859-1";
}

class FontDict : public testing::Test {
 protected:
  // No server here: no font can be loaded, but the names asked for are seen.
  ziXFontDict dict{1, {}, [this](const std::string& name) {
                     loaded.push_back(name);
                     return std::unique_ptr<ziXFont>();
                   }};
  std::vector<std::string> loaded;
  zFontSpec spec{"helvetica", {0, 12}};
};

TEST_F(FontDict, AnEqualRequestGivesTheSameEntryAndLoadsOnce) {
  dict.addName(helvetica("12-120-75-75-p-70"));
  ziFontCacheEntry* entry = dict.realize(spec);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->refCount, 0) << "a font that can't be loaded has no count";
  EXPECT_EQ(dict.realize(spec), entry);
  // Intended: nothing is ever released.
  dict.release(entry);
  EXPECT_EQ(entry->refCount, 1);
  // The request as the font reports it, its width filled in by the point size.
  EXPECT_EQ(entry->spec.log().width, 120);
  EXPECT_EQ(dict.realize(entry->spec), entry);
  EXPECT_EQ(dict.usedCount(), 1U);
  EXPECT_THAT(loaded, testing::Contains(helvetica("12-120-75-75-p-70")).Times(1));
  zFontSpec wide = spec;
  wide.log().width = 7;
  EXPECT_NE(dict.realize(wide), entry);
  EXPECT_EQ(dict.realize(wide)->spec.log().width, 7);
}

// A server may list what it refuses. Of equals the first comes first.
TEST_F(FontDict, TriesTheNextBestAndAtLastTheDefaultFonts) {
  for (const char* sizes : {"0-0-0-0-p-0", "14-140-75-75-p-70", "13-100-75-75-p-60",
                            "11-100-75-75-p-62", "11-100-75-75-p-60"}) {
    dict.addName(helvetica(sizes));
  }
  dict.addName("-a-b-bold-r---1-1-1-1-c-1-jisx0208.1983-0");
  dict.addName(helvetica("12-100-75-75-p-60", "other"));
  dict.addName(helvetica("30000-1-75-75-p-60"));  // beyond the worst penalty
  dict.realize(spec);
  EXPECT_THAT(loaded,
              ElementsAre(helvetica("12-100-75-75-p-60", "other"), helvetica("11-100-75-75-p-62"),
                          helvetica("11-100-75-75-p-60"), helvetica("13-100-75-75-p-60"),
                          helvetica("12-*-0-0-p-*"), helvetica("14-140-75-75-p-70"), "",
                          ziScreen::kFallbackFontName, ziScreen::kLastResortFontName));
  loaded.clear();
  dict.realize(zFontSpec::fromFullName(helvetica("0-0-0-0-p-0").c_str()));
  EXPECT_EQ(loaded.front(), helvetica("0-0-0-0-p-0"));
}

TEST(Font, LivesWithoutADictionaryAndOutlivesIt) {
  ASSERT_EQ(ziDrawCache::instance().fonts(), nullptr);
  const zFont without(14);
  EXPECT_EQ(without.xFont(), nullptr);
  EXPECT_EQ(without.pixel(), 0U);
  EXPECT_EQ(without.measure("abcd", 4), (zDimension{60, 15}));
  ziDrawCache::instance().setFonts(std::make_unique<ziXFontDict>(
      1, ziPenaltyRules{}, [](const std::string&) { return std::unique_ptr<ziXFont>(); }));
  ziDrawCache::instance().fonts()->addName(helvetica("12-120-75-75-p-70"));
  const zFont font(12);
  EXPECT_EQ(font.spec().log().width, 120);
  ziDrawCache::destroy();
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
  EXPECT_STREQ(zFont(zFontSpec("Arial", {0, 9})).spec().log().faceName.c_str(), "helvetica");
  theScreen().dotsPerInchX = theScreen().dotsPerInchY = 72;
  const auto bold = [](const char* face, auto pitch) {
    return zFontSpec(face, {11, 11}, kFontBold, pitch);
  };
  // Intended: only 10 to 14 go through the face map.
  for (const int number : {-1, 0, 9, 10, 11, 12, 13, 14, 15}) {
    EXPECT_EQ(zFontSpec::stock(number), number < 10 || number > 14 ? bold("FixedSys", kPitchFixed)
                                        : number < 12              ? bold("fixed", kPitchFixed)
                                                      : bold("helvetica", kPitchVariable))
        << number;
  }
  theScreen().dotsPerInchX = theScreen().dotsPerInchY = 0;
  zRCFont first(12);
  const zRCFont second = first;
  zFont* font = first.font();
  first = zRCFont();
  EXPECT_TRUE(first.isEmpty());
  EXPECT_EQ(first.font(), nullptr);
  EXPECT_EQ(second.font(), font) << "a handle shares its font";
  EXPECT_FALSE(second == zRCFont(12));
}

}  // namespace
