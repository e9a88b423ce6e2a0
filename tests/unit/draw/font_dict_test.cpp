#include "framework/draw/font_dict.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "framework/draw/font.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

namespace {

std::string helvetica(const std::string& sizes, const std::string& tail = "iso8859-1") {
  return "-adobe-helvetica-bold-r-normal--" + sizes + "-" + tail;
}

class FontDict : public testing::Test {
 protected:
  // No server here: no font can be loaded, but the names asked for are seen.
  ziXFontDict dict{ziXFontDict::kDefaultCapacity, {}, [this](const std::string& name) {
                     loaded.push_back(name);
                     return std::unique_ptr<ziXFont>();
                   }};
  std::vector<std::string> loaded;
  zFontSpec spec{"helvetica", {0, 12}};
};

TEST_F(FontDict, OfTwoSizesTakesTheSmaller) {
  dict.addName(helvetica("13-120-75-75-p-70"));
  dict.addName(helvetica("11-100-75-75-p-60"));
  EXPECT_EQ(dict.candidates(spec).front()->pixelSize, 11);
}

TEST_F(FontDict, OfEqualsTakesTheFirst) {
  dict.addName(helvetica("11-100-75-75-p-61"));
  dict.addName(helvetica("11-100-75-75-p-62"));
  EXPECT_EQ(dict.candidates(spec).front()->averageWidth, 61);
}

TEST_F(FontDict, AnEqualRequestGivesTheSameEntryAndLoadsOnce) {
  dict.addName(helvetica("12-120-75-75-p-70"));
  ziFontCacheEntry* entry = dict.realize(spec);
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->refCount, 0) << "a font that can't be loaded has no count";
  EXPECT_EQ(dict.realize(spec), entry);
  // The request as the font reports it, its width filled in by the point size.
  EXPECT_EQ(entry->spec.log().width, 120);
  EXPECT_EQ(dict.realize(entry->spec), entry);
  EXPECT_THAT(loaded, testing::Contains(helvetica("12-120-75-75-p-70")).Times(1));
}

// A server may list what it refuses.
TEST_F(FontDict, TriesTheNextBestAndAtLastTheDefaultFonts) {
  dict.addName(helvetica("0-0-0-0-p-0"));
  dict.addName(helvetica("14-140-75-75-p-70"));
  dict.addName(helvetica("11-100-75-75-p-60"));
  dict.realize(spec);
  EXPECT_THAT(loaded,
              testing::ElementsAre(helvetica("11-100-75-75-p-60"), helvetica("12-*-0-0-p-*"),
                                   helvetica("14-140-75-75-p-70"), "", ziScreen::kFallbackFontName,
                                   ziScreen::kLastResortFontName));
  loaded.clear();
  dict.realize(zFontSpec::fromFullName(helvetica("0-0-0-0-p-0").c_str()));
  EXPECT_EQ(loaded.front(), helvetica("0-0-0-0-p-0"));
}

// Intended: nothing is ever released.
TEST_F(FontDict, ReleaseNeverLowersTheCount) {
  dict.addName(helvetica("12-120-75-75-p-70"));
  ziFontCacheEntry* entry = dict.realize(spec);
  dict.realize(spec);
  const int count = entry->refCount;
  dict.release(entry);
  dict.release(entry);
  EXPECT_EQ(entry->refCount, count);
  EXPECT_EQ(dict.realize(spec), entry);
  EXPECT_EQ(dict.usedCount(), 1U);
}

TEST_F(FontDict, AnythingMatchesRatherThanNothing) {
  dict.addName("");
  EXPECT_EQ(dict.candidates(spec).front(), &dict.entries().front());
}

TEST(Font, WithoutADictionaryMeasuresByFifteenPixelsACharacter) {
  ASSERT_EQ(ziDrawCache::instance().fonts(), nullptr);
  const zFont font(14);
  EXPECT_EQ(font.xFont(), nullptr);
  EXPECT_EQ(font.measure("abcd", 4), (zDimension{60, 15}));
}

TEST(Font, OutlivesTheDictionary) {
  ziDrawCache::instance().setFonts(std::make_unique<ziXFontDict>(
      1, ziPenaltyRules{}, [](const std::string&) { return std::unique_ptr<ziXFont>(); }));
  ziDrawCache::instance().fonts()->addName(helvetica("12-120-75-75-p-70"));
  const zFont font(12);
  EXPECT_NE(font.cacheEntry(), nullptr);
  ziDrawCache::destroy();
}

TEST(StockFont, FacesAndPitchesFollowTheNumber) {
  for (const int number : {12, 13, 14}) {
    EXPECT_STREQ(zFontSpec::stock(number).log().faceName.c_str(), "helvetica");
    EXPECT_EQ(zFontSpec::stock(number).log().pitch(), kPitchVariable);
  }
  for (const int number : {10, 11}) {
    EXPECT_STREQ(zFontSpec::stock(number).log().faceName.c_str(), "fixed");
  }
  // Intended: only 10 to 14 go through the face map.
  for (const int number : {0, 9, 15, -1}) {
    EXPECT_STREQ(zFontSpec::stock(number).log().faceName.c_str(), "FixedSys");
    EXPECT_EQ(zFontSpec::stock(number).log().pitch(), kPitchFixed);
    EXPECT_EQ(zFontSpec::stock(number).log().weight, kFontBold);
  }
}

TEST(RCFont, ACopySharesTheFont) {
  EXPECT_TRUE(zRCFont().isEmpty());
  EXPECT_EQ(zRCFont().font(), nullptr);
  zRCFont first(12);
  const zRCFont second = first;
  EXPECT_EQ(first, second);
  zFont* font = first.font();
  first = zRCFont();
  EXPECT_EQ(second.font(), font);
  EXPECT_FALSE(second == zRCFont(12));
}

}  // namespace
