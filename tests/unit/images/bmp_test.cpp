#include "framework/draw/image/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "image_data.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct Coding {
  const char* name;
  Dib dib;
  const char* rows;
};

class Codings : public testing::TestWithParam<Coding> {};

TEST_P(Codings, DecodeFromTheBottomRowUp) {
  const ziDecodedBitmap decoded = decodeBmp(bmpOf(GetParam().dib));
  EXPECT_EQ(shown(decoded.picture), GetParam().rows);
  EXPECT_THAT(decoded.messages, IsEmpty());
}

Dib dib(std::uint32_t width, std::uint32_t height, std::uint32_t bits, std::uint32_t compression,
        Bytes pixels) {
  Dib result;
  result.width = width;
  result.height = height;
  result.bits = bits;
  result.compression = compression;
  result.colours = bits > 8 ? 0 : 1U << bits;
  result.pixels = std::move(pixels);
  return result;
}

INSTANTIATE_TEST_SUITE_P(
    Bmp, Codings,
    testing::Values(
        Coding{"OneBitHighestFirst", dib(10, 2, 1, 0, {0xA0, 0x40, 0, 0, 0x01, 0x80, 0, 0}),
               "aaaaaaabba/babaaaaaab"},
        Coding{"FourBitsHighNibbleFirst", dib(3, 2, 4, 0, {0x12, 0x30, 0, 0, 0x45, 0x6F, 0, 0}),
               "efg/bcd"},
        Coding{"EightBitsPaddedToFourBytes",
               dib(5, 2, 8, 0, {0, 1, 2, 3, 4, 9, 9, 9, 5, 6, 7, 8, 9, 9, 9, 9}), "fghij/abcde"},
        Coding{"PixelsThatAreMissingStayBlank", dib(3, 3, 8, 0, {0, 1, 2, 0, 3, 4}), ".../de./abc"},
        Coding{"RunsOfBytes", dib(4, 2, 8, 1, {3, 1, 1, 2, 0, 0, 2, 3, 0, 1, 4, 4}), "dd../bbbc"},
        Coding{"AbsoluteRunsOfBytesPadToWords", dib(5, 1, 8, 1, {0, 3, 1, 2, 3, 9, 2, 4, 0, 1}),
               "bcdee"},
        Coding{"DeltasLeaveBlanks", dib(4, 3, 8, 1, {1, 1, 0, 2, 1, 2, 1, 2}), "..c./..../b..."},
        Coding{"RunsOfNibblesTakeTurns", dib(6, 1, 4, 2, {5, 0x12}), "bcbcb."},
        Coding{"AbsoluteRunsOfNibblesPadToWords",
               dib(7, 1, 4, 2, {0, 5, 0x12, 0x34, 0x50, 9, 2, 0x67}), "bcdefgh"},
        Coding{"AnyCompressionOfFourBitsIsRunLength", dib(2, 1, 4, 77, {2, 0x12}), "bc"},
        Coding{"RunsAreCutAtTheEdge", dib(3, 2, 8, 1, {255, 1, 0, 0, 255, 2}), "ccc/bbb"},
        Coding{"RowsBeyondThePictureEndIt", dib(2, 1, 8, 1, {0, 2, 0, 255, 2, 1, 0, 0, 2, 2}),
               ".."},
        Coding{"AnAbsoluteRunThatBreaksOff", dib(4, 1, 8, 1, {0, 200, 1, 2}), "bc.."},
        Coding{"ALineIsNotLeftByARunThatIsTooLong", dib(2, 2, 8, 1, {5, 1, 5, 2}), "../bb"}),
    [](const auto& row) { return row.param.name; });

struct Refusal {
  const char* name;
  Bytes data;
  ziMessages messages;
  int width;  ///< of the picture that is left
};

class Refusals : public testing::TestWithParam<Refusal> {};

TEST_P(Refusals, SayWhy) {
  const ziDecodedBitmap decoded = decodeBmp(GetParam().data);
  EXPECT_EQ(decoded.messages, GetParam().messages);
  EXPECT_EQ(decoded.picture.width(), GetParam().width);
}

Bytes oldHeader() {
  Dib old = dib(1, 1, 8, 0, {});
  old.length = 12;
  return bmpOf(old);
}

constexpr const char* kNoImage = "Inable to create XImage";

INSTANTIATE_TEST_SUITE_P(
    Bmp, Refusals,
    testing::Values(
        Refusal{
            "AHeaderOfTwelveBytes", oldHeader(), {"Unsupported bitmap header type, length=12"}, 0},
        Refusal{"NoDataAtAll", {}, {"Unsupported bitmap header type, length=0"}, 0},
        Refusal{"TrueColour",
                bmpOf(dib(1, 1, 24, 0, {1, 2, 3, 0})),
                {"Unsupported color table type, num=24", "Unsupported bits per pixel"},
                0},
        // Intended: the blank picture has its size.
        Refusal{"NibblesInBytes",
                bmpOf(dib(17, 1, 8, 2, {2, 1})),
                {"Unsupported compression: 8 bit RLE4"},
                17},
        Refusal{"NoWidth", bmpOf(dib(0, 1, 8, 0, {})), {kNoImage}, 0},
        Refusal{"NegativeHeight", bmpOf(dib(1, 0xFFFFFFFF, 8, 0, {1})), {kNoImage}, 0},
        Refusal{"AnAreaThatOverflows", bmpOf(dib(0x10000, 0x10000, 1, 0, {})), {kNoImage}, 0},
        Refusal{"AnAreaForWhichThereAreNoData", bmpOf(dib(4096, 4096, 8, 1, {})), {kNoImage}, 0}),
    [](const auto& row) { return row.param.name; });

constexpr std::uint32_t kBehindTable = 14 + 40 + 1024;

TEST(BmpColours, AreReadAsBlueGreenRed) {
  const auto colours = decodeBmp(bmpOf(dib(1, 1, 4, 0, {0}))).picture.colours;
  ASSERT_EQ(colours.size(), 16U) << "none used means all of them";
  EXPECT_EQ(colours[5], 0x0F0A05U);
}

TEST(BmpColours, TheNumberUsedCountsForFourAndEightBitsOnly) {
  Dib few = dib(1, 1, 8, 0, {2});
  few.coloursUsed = few.colours = 3;
  EXPECT_EQ(decodeBmp(bmpOf(few)).picture.colours.size(), 3U);
  EXPECT_EQ(shown(decodeBmp(bmpOf(few)).picture), "c");

  Dib mono = dib(8, 1, 1, 0, {0xFF, 0, 0, 0});
  mono.coloursUsed = 200;
  EXPECT_EQ(decodeBmp(bmpOf(mono)).picture.colours.size(), 2U);
  EXPECT_EQ(shown(decodeBmp(bmpOf(mono)).picture), "bbbbbbbb");
}

TEST(BmpColours, ThatATableDoesNotHaveAreTold) {
  Dib wrong = dib(2, 1, 8, 0, {0, 2});
  wrong.coloursUsed = 0xFFFFFFFF;
  EXPECT_EQ(shown(decodeBmp(bmpOf(wrong)).picture), "..");
  const ziDecodedBitmap saved = decodeBmp(bmpOf(wrong, kBehindTable));
  EXPECT_EQ(shown(saved.picture), "ac") << "the offset is right";
  EXPECT_THAT(saved.messages, ElementsAre("Unsupported color table type, num=4294967295"));

  wrong.coloursUsed = wrong.colours = 1;
  EXPECT_THAT(decodeBmp(bmpOf(wrong)).messages, ElementsAre("Unsupported color table type, num=1"));
}

TEST(BmpPixels, StartAtTheOffsetWhereItPointsBehindTheTable) {
  const Dib gap = dib(1, 1, 8, 0, {9, 9, 9, 9, 3, 0, 0, 0});
  EXPECT_EQ(shown(decodeBmp(bmpOf(gap, kBehindTable + 4)).picture), "d");
  EXPECT_EQ(shown(decodeBmp(bmpOf(gap, 20)).picture), "j");
  EXPECT_EQ(shown(decodeBmp(bmpOf(gap, 0xFFFFFF00)).picture), "j");
}

}  // namespace
