// The readers of BMP and ICO data, and the dialogs of the button set as data.

#include <gmock/gmock.h>

#include <span>
#include <sstream>

#include "framework/draw/image/picture.h"
#include "resources/dialogs.h"

namespace {

using testing::ElementsAre;
using Bytes = std::vector<std::uint8_t>;

/// Bytes from hexadecimal digits; blanks count for nothing.
Bytes fromHex(std::string digits) {
  std::erase(digits, ' ');
  Bytes bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    bytes.push_back(static_cast<std::uint8_t>(std::stoi(digits.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

/// What a reader made of a picture: its rows from the top, "/" between them, a letter from "a" on
/// for each colour and "." for a blank pixel; then the messages, "|" before each.
std::string told(const ziPicture& picture, const ziMessages& messages = {}) {
  std::string text;
  for (int y = 0; y < picture.height(); ++y) {
    text += y == 0 ? "" : "/";
    for (int x = 0; x < picture.width(); ++x) {
      const std::uint16_t index = picture.at(x, y);
      text += index == ziPicture::kBlank ? '.' : static_cast<char>('a' + index);
    }
  }
  for (const std::string& message : messages) {
    text += '|' + message;
  }
  return text;
}

/// Appends numbers of `size` bytes, the lowest byte first.
void add(Bytes& bytes, int size, std::initializer_list<std::size_t> numbers) {
  for (std::size_t number : numbers) {
    for (int i = 0; i < size; ++i, number >>= 8) {
      bytes.push_back(static_cast<std::uint8_t>(number));
    }
  }
}

/// The info header, the colour table and the pixels of a picture.
struct Dib {
  std::uint32_t width, height, bits, compression;
  std::string pixels;  ///< digits
  std::uint32_t used = 0;
  std::uint32_t length = 40;

  /// Colour i is blue i, green 2 * i, red 3 * i; the table has all or those in use.
  void addTo(Bytes& bytes) const {
    add(bytes, 4, {length, width, height});
    add(bytes, 2, {1, bits});
    add(bytes, 4, {compression, 0, 0, 0, used, 0});
    const std::uint32_t all = bits > 8 ? 0 : 1U << bits;
    for (std::uint32_t i = 0; i < (used == 0 || used > all ? all : used); ++i) {
      add(bytes, 1, {i, 2 * i, 3 * i, 0});
    }
    const Bytes tail = fromHex(pixels);
    bytes.insert(bytes.end(), tail.begin(), tail.end());
  }
};

/// Behind a file header that nothing but the offset of the pixels can be learnt from.
ziDecodedBitmap decoded(const Dib& dib, std::uint32_t pixelOffset = 0) {
  Bytes bytes(10, 0xFF);
  add(bytes, 4, {pixelOffset});
  dib.addTo(bytes);
  return decodeBmp(bytes);
}

TEST(Bmp, DecodesItsPixelsAndSaysWhatIsWrongWithThem) {
  const std::string noImage = "|Inable to create XImage";
  const std::string header = "|Unsupported bitmap header type, length=";
  const std::string colours = "|Unsupported color table type, num=";
  constexpr std::uint32_t kBehindTable = 14 + 40 + 1024;
  struct Row {
    Dib dib;
    std::string outcome;
    std::uint32_t offset = 0;  ///< of the pixels, as the file header says
  };
  for (const Row& row : std::vector<Row>{
           // Plain rows, the bottom one first, padded to four bytes.
           {{10, 2, 1, 0, "A0400000 01800000"}, "aaaaaaabba/babaaaaaab"},
           {{3, 2, 4, 0, "12300000 456F0000"}, "efg/bcd"},
           {{5, 2, 8, 0, "0001020304090909 0506070809090909"}, "fghij/abcde"},
           {{3, 3, 8, 0, "00010200 0304"}, ".../de./abc"},
           // Runs of bytes, absolute ones padded to words, and deltas.
           {{4, 2, 8, 1, "0301 0102 0000 0203 0001 0404"}, "dd../bbbc"},
           {{5, 1, 8, 1, "0003 01020309 0204 0001"}, "bcdee"},
           {{4, 3, 8, 1, "0101 0002 0102 0102"}, "..c./..../b..."},
           // Runs of nibbles take turns; any compression of four bits is taken for that.
           {{6, 1, 4, 2, "0512"}, "bcbcb."},
           {{7, 1, 4, 2, "0005 12345009 0267"}, "bcdefgh"},
           {{2, 1, 4, 77, "0212"}, "bc"},
           // Runs are cut at the edge and do not leave their line; rows beyond the picture end it.
           {{3, 2, 8, 1, "FF01 0000 FF02"}, "ccc/bbb"},
           {{2, 2, 8, 1, "0501 0502"}, "../bb"},
           {{2, 1, 8, 1, "0002 00FF 0201 0000 0202"}, ".."},
           {{4, 1, 8, 1, "00C8 0102"}, "bc.."},
           // The offset counts where it points behind the table.
           {{1, 1, 8, 0, "09090909 03000000"}, "d", kBehindTable + 4},
           {{1, 1, 8, 0, "09090909"}, "j", 20},
           {{1, 1, 8, 0, "09"}, "j", 0xFFFFFF00},
           // The number of colours used counts for four and eight bits only.
           {{4, 1, 1, 0, "50000000", 200}, "abab"},
           {{1, 1, 8, 0, "02", 3}, "c"},
           {{3, 1, 8, 0, "000001", 1}, "aab" + colours + "1"},
           {{2, 1, 8, 0, "0002", 0xFFFFFFFF}, ".." + colours + "4294967295"},
           {{2, 1, 8, 0, "0002", 0xFFFFFFFF}, "ac" + colours + "4294967295", kBehindTable},
           // Intended: the blank picture has its size.
           {{17, 1, 8, 2, "0201"}, std::string(17, '.') + "|Unsupported compression: 8 bit RLE4"},
           {{1, 1, 24, 0, "01020300"}, colours + "24|Unsupported bits per pixel"},
           {{1, 1, 8, 0, "", 0, 0xFFFFFFFF}, header + "-1"},
           {{0, 1, 8, 0, ""}, noImage},
           {{1, 0xFFFFFFFF, 8, 0, "01"}, noImage},
       }) {
    const ziDecodedBitmap bitmap = decoded(row.dib, row.offset);
    EXPECT_EQ(told(bitmap.picture, bitmap.messages), row.outcome) << row.dib.pixels;
  }
  EXPECT_EQ(told({}, decodeBmp({}).messages), header + "0");
  const std::vector<std::uint32_t> all = decoded({1, 1, 4, 0, "00"}).picture.colours;
  EXPECT_EQ(all.size(), 16U) << "none used means all of them";
  EXPECT_EQ(all.at(5), 0x0F0A05U) << "blue, green, red";
}

TEST(Bmp, ALargePictureNeedsDataThatCouldFillIt) {
  EXPECT_TRUE(ziPicture::isAcceptable(32767, 8, 0) && ziPicture::isAcceptable(8, 32767, 0));
  EXPECT_FALSE(ziPicture::isAcceptable(32768, 8, 0) || ziPicture::isAcceptable(8, 32768, 0));
  EXPECT_TRUE(ziPicture::isAcceptable(512, 512, 0) && ziPicture::isAcceptable(513, 512, 2052));
  EXPECT_FALSE(ziPicture::isAcceptable(513, 512, 2051));
  EXPECT_TRUE(ziPicture::isAcceptable(4096, 4096, 131072));
  EXPECT_FALSE(ziPicture::isAcceptable(4096, 4097, 1U << 30));
}

constexpr std::uint32_t kIcons = 1;
constexpr std::uint32_t kCursors = 2;

struct Image {
  std::uint32_t width, height, colours;  ///< as the directory says
  Dib dib;                               ///< with its mask
};

Bytes directoryOf(std::uint32_t type, const std::vector<Image>& images) {
  Bytes directory;
  Bytes data;
  add(directory, 2, {0, type, images.size()});
  for (const Image& image : images) {
    add(directory, 1, {image.width, image.height, image.colours, 0});
    add(directory, 2, {99, 99});
    add(directory, 4, {0, 6 + 16 * images.size() + data.size()});
    image.dib.addTo(data);
  }
  directory.insert(directory.end(), data.begin(), data.end());
  return directory;
}

// Pictures of 3 by 2 pixels, whatever the directory says: colour 1 with another at the left of the
// top row, transparent at its right.
const std::string kMask = "00000000 20000000";
const Image kTwo{32, 32, 2, {3, 4, 1, 0, "E0000000 60000000" + kMask}};
const Image kSixteen{32, 32, 16, {3, 4, 4, 0, "11100000 21100000" + kMask}};

/// kSixteen with other words in the directory, another depth or height.
Image changed(std::uint32_t width, std::uint32_t colours, std::uint32_t bits = 4,
              std::uint32_t height = 4) {
  return {width, 32, colours, {3, height, bits, 0, kSixteen.dib.pixels}};
}

TEST(Ico, DecodesItsBestImageOrSaysWhyNot) {
  const std::string depth = "|Unsupported bits per pixel";
  const std::string colours = "|Unsupported color table type, num=";
  const std::string noImage = "|Inable to create XImage";
  const Image packed{32, 32, 0, {3, 4, 4, 0, "", 0, 0x474E5089}};
  struct Row {
    std::uint32_t type;
    std::vector<Image> images;
    std::string outcome;
  };
  for (const Row& row : std::vector<Row>{
           {kIcons, {kTwo, kSixteen}, "cbb/bbb"},
           {kIcons, {kTwo}, "abb/bbb"},
           {kIcons, {kTwo, changed(32, 0)}, "cbb/bbb"},
           {kIcons, {kSixteen, changed(32, 16, 4, 2)}, "cbb/bbb"},
           // One that cannot be read leaves its place to the other.
           {kIcons, {changed(32, 16, 24), kTwo}, "abb/bbb" + colours + "24" + depth},
           {kCursors, {kSixteen}, "|none"},
           {kIcons, {}, "|none"},
           {kIcons, {changed(16, 16)}, "|none"},
           {kIcons, {changed(32, 0, 8)}, depth},
           {kIcons, {packed}, "|Unsupported icon header type, length=1196314761"},
           {kIcons, {changed(32, 16, 4, 0xFFFFFFFE)}, noImage},
       }) {
    const ziMaskedPicture image = decodeIcon(directoryOf(row.type, row.images), "none");
    EXPECT_EQ(told(image.picture, image.messages), row.outcome);
    EXPECT_EQ(windowManagerIcon(image).empty(), row.outcome.front() == '|');
  }
}

TEST(Ico, HasAMaskBehindThePictureAndItsWordsForWindowManagers) {
  const ziMaskedPicture icon = decodeIcon(directoryOf(kIcons, {kSixteen}), "none");
  EXPECT_EQ(told(icon.mask), "aab/aaa");
  EXPECT_THAT(windowManagerIcon(icon),
              ElementsAre(3, 2, 0xFF060402, 0xFF030201, 0, 0xFF030201, 0xFF030201, 0xFF030201));
  EXPECT_THAT(opaqueBits(icon).bits, ElementsAre(0x3, 0x7));
  const ziMaskedPicture cursor = decodeCursor(directoryOf(kCursors, {kSixteen, kTwo}), "none");
  EXPECT_EQ(told(cursor.picture), "abb/bbb");
  EXPECT_EQ(cursor.hotSpot, (zPoint{2, 1}));
}

TEST(DialogResource, HasItsControlsInTheAgreedPlaces) {
  std::ostringstream places;
  for (std::uint32_t id = 0; id < 3000; ++id) {
    if (const DialogResource* dialog = findDialogResource(id)) {
      places << '\n' << id << ' ' << dialog->cx << 'x' << dialog->cy << ':';
      for (const ControlRecord& item : std::span(dialog->items, dialog->itemCount)) {
        places << ' ' << item.x << ',' << item.y << ' ' << item.cx << 'x' << item.cy;
      }
    }
  }
  EXPECT_EQ(places.str(), R"(
503 152x166: 17,143 50x15 84,143 50x15 17,9 81x8 17,25 115x100
504 202x82: 51,9 137x12 51,28 137x12 40,59 50x15 112,59 50x15 11,9 26x12 11,29 35x10
505 204x81: 51,9 138x12 51,28 138x12 12,59 50x15 75,59 50x15 139,59 50x15 11,9 26x12 11,29 35x10
506 178x63: 59,10 104x12 24,41 50x15 100,41 50x15 10,11 47x12
507 218x65: 59,10 143x12 17,41 50x15 81,41 50x15 145,41 50x15 10,11 47x12
517 153x164: 17,140 50x15 82,140 50x15 17,9 91x8 17,25 115x100
519 205x65: 14,41 51x15 78,41 50x15 140,41 50x15 44,9 117x8
2304 200x64: 40,41 50x15 110,41 50x15 90,10 98x12 10,11 78x12)");
}

}  // namespace
