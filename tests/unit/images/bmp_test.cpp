#include <gtest/gtest.h>

#include "framework/draw/image/picture.h"
#include "image_data.h"

namespace {

constexpr std::uint32_t kBehindTable = 14 + 40 + 1024;

struct Row {
  std::uint32_t width, height, bits, compression;
  const char* pixels;
  std::string outcome;  ///< the rows of the picture from the top, and messages
  std::uint32_t used = 0;
  std::uint32_t offset = 0;  ///< of the pixels, as the file header says
  std::uint32_t length = 40;
};

std::string outcomeOf(const Row& row, std::uint32_t coloursThere) {
  const Dib dib{row.length,      row.width, row.height,   row.bits,
                row.compression, row.used,  coloursThere, fromHex(row.pixels)};
  const ziDecodedBitmap decoded = decodeBmp(bmpOf(dib, row.offset));
  return told(decoded.picture, decoded.messages);
}

// The bottom row comes first. A letter a colour, "." for a blank pixel.
TEST(Bmp, DecodesItsPixels) {
  for (const Row& row : {
           // Plain rows, padded to four bytes.
           Row{10, 2, 1, 0, "A0400000 01800000", "aaaaaaabba/babaaaaaab"},
           {3, 2, 4, 0, "12300000 456F0000", "efg/bcd"},
           {5, 2, 8, 0, "0001020304090909 0506070809090909", "fghij/abcde"},
           {3, 3, 8, 0, "00010200 0304", ".../de./abc"},
           // Runs of bytes, absolute ones padded to words, and deltas.
           {4, 2, 8, 1, "0301 0102 0000 0203 0001 0404", "dd../bbbc"},
           {5, 1, 8, 1, "0003 01020309 0204 0001", "bcdee"},
           {4, 3, 8, 1, "0101 0002 0102 0102", "..c./..../b..."},
           // Runs of nibbles take turns; any compression of four bits is taken for that.
           {6, 1, 4, 2, "0512", "bcbcb."},
           {7, 1, 4, 2, "0005 12345009 0267", "bcdefgh"},
           {2, 1, 4, 77, "0212", "bc"},
           // Runs are cut at the edge and do not leave their line; rows beyond the picture end it.
           {3, 2, 8, 1, "FF01 0000 FF02", "ccc/bbb"},
           {2, 2, 8, 1, "0501 0502", "../bb"},
           {2, 1, 8, 1, "0002 00FF 0201 0000 0202", ".."},
           {4, 1, 8, 1, "00C8 0102", "bc.."},
           // The offset counts where it points behind the table.
           {1, 1, 8, 0, "09090909 03000000", "d", 0, kBehindTable + 4},
           {1, 1, 8, 0, "09090909", "j", 0, 20},
           {1, 1, 8, 0, "09", "j", 0, 0xFFFFFF00},
           // The number of colours used counts for four and eight bits only.
           {4, 1, 1, 0, "50000000", "abab", 200},
       }) {
    EXPECT_EQ(outcomeOf(row, 1U << row.bits), row.outcome) << row.pixels;
  }
  EXPECT_EQ(outcomeOf({1, 1, 8, 0, "02", "", 3}, 3), "c");
  const auto colours = decodeBmp(bmpOf({.bits = 4, .colours = 16, .pixels = {0}})).picture.colours;
  ASSERT_EQ(colours.size(), 16U) << "none used means all of them";
  EXPECT_EQ(colours[5], 0x0F0A05U) << "blue, green, red";
}

TEST(Bmp, SurvivesWhatIsWrongAndSaysWhatItIs) {
  const std::string noImage = "|Inable to create XImage";
  const std::string header = "|Unsupported bitmap header type, length=";
  const std::string colours = "|Unsupported color table type, num=";
  for (const Row& row : {
           Row{1, 1, 8, 0, "", header + "12", 0, 0, 12},
           {1, 1, 8, 0, "", header + "-1", 0, 0, 0xFFFFFFFF},
           {1, 1, 24, 0, "01020300", colours + "24|Unsupported bits per pixel"},
           // Intended: the blank picture has its size.
           {17, 1, 8, 2, "0201", std::string(17, '.') + "|Unsupported compression: 8 bit RLE4"},
           {0, 1, 8, 0, "", noImage},
           {1, 0, 8, 0, "", noImage},
           {1, 0xFFFFFFFF, 8, 0, "01", noImage},
           {32768, 1, 1, 0, "", noImage},
           {1, 32768, 1, 0, "", noImage},
           {4096, 4096, 8, 1, "", noImage},
           {2, 1, 8, 0, "0002", ".." + colours + "4294967295", 0xFFFFFFFF},
           {2, 1, 8, 0, "0002", "ac" + colours + "4294967295", 0xFFFFFFFF, kBehindTable},
       }) {
    EXPECT_EQ(outcomeOf(row, row.bits > 8 ? 0 : 1U << row.bits), row.outcome);
  }
  EXPECT_EQ(outcomeOf({3, 1, 8, 0, "000203", "", 1}, 1), "acd" + colours + "1");
  EXPECT_EQ(decodeBmp({}).messages, ziMessages{header.substr(1) + "0"});
  // A large picture needs data that could fill it.
  EXPECT_TRUE(ziPicture::isAcceptable(512, 512, 0) && ziPicture::isAcceptable(32767, 8, 0));
  EXPECT_TRUE(ziPicture::isAcceptable(8, 32767, 0) && ziPicture::isAcceptable(4096, 4096, 131072));
  EXPECT_TRUE(ziPicture::isAcceptable(513, 512, 2052));
  EXPECT_FALSE(ziPicture::isAcceptable(513, 512, 2051));
  EXPECT_FALSE(ziPicture::isAcceptable(4096, 4097, 1U << 30));
  EXPECT_FALSE(ziPicture::isAcceptable(-1, 1, 9) || ziPicture::isAcceptable(1, -1, 9));
}

}  // namespace
