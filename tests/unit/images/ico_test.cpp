#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "framework/draw/image/picture.h"
#include "image_data.h"
#include "resources/builtin_table.h"
#include "resources/resource_ids.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kIcons = 1;
constexpr std::uint32_t kCursors = 2;

struct Image {
  std::uint32_t width = 32;
  std::uint32_t height = 32;
  std::uint32_t colours = 16;
  Dib dib;
};

// A picture of 3 by 2 pixels, whatever the directory says: colour 1 with another at the left of the
// top row, transparent at its right.
Dib smallDib(std::uint32_t bits) {
  Dib dib{
      .width = 3, .height = 4, .bits = bits, .colours = bits > 8 ? 0 : 1U << bits, .pixels = {}};
  dib.pixels =
      bits == 1 ? Bytes{0xE0, 0, 0, 0, 0x60, 0, 0, 0} : Bytes{0x11, 0x10, 0, 0, 0x21, 0x10, 0, 0};
  dib.pixels.insert(dib.pixels.end(), {0, 0, 0, 0, 0x20, 0, 0, 0});
  return dib;
}

Dib tallDib(std::uint32_t height) {
  Dib dib = smallDib(4);
  dib.height = height;
  return dib;
}

Bytes directoryOf(std::uint32_t type, const std::vector<Image>& images) {
  constexpr std::size_t kEntrySize = 16;
  ByteWriter out(ByteWriter::Order::kLittle);
  out.number(0, 2).number(type, 2).number(static_cast<std::uint32_t>(images.size()), 2);
  Bytes data;
  for (const Image& image : images) {
    const std::size_t offset = 6 + kEntrySize * images.size() + data.size();
    out.number(image.width, 1).number(image.height, 1).number(image.colours, 1).number(0, 1);
    out.number(1, 2).number(99, 2);
    const Bytes bytes = image.dib.bytes();
    out.words({static_cast<std::uint32_t>(bytes.size()), static_cast<std::uint32_t>(offset)});
    data.insert(data.end(), bytes.begin(), bytes.end());
  }
  return out.append(data).bytes;
}

const Image kTwo{32, 32, 2, smallDib(1)};
const Image kSixteen{32, 32, 16, smallDib(4)};
const Image kUncounted{32, 32, 0, smallDib(4)};
const Image kPacked{32, 32, 0, {.length = 0x474E5089, .pixels = {}}};

TEST(Ico, DecodesItsBestImageOrSaysWhyNot) {
  const std::string depth = "|Unsupported bits per pixel";
  const std::string colours = "|Unsupported color table type, num=";
  const std::string noImage = "|Inable to create XImage";
  struct Row {
    std::uint32_t type;
    std::vector<Image> images;
    bool asCursor;
    std::string outcome;  ///< the rows of the picture from the top, and messages
  };
  for (const Row& row : std::vector<Row>{
           {kIcons, {kTwo, kSixteen}, false, "cbb/bbb"},
           {kIcons, {kTwo}, false, "abb/bbb"},
           {kIcons, {kTwo, kUncounted}, false, "cbb/bbb"},
           {kCursors, {kSixteen, kTwo}, true, "abb/bbb"},
           {kCursors, {kSixteen}, true, "cbb/bbb"},
           {kIcons, {kSixteen}, true, "cbb/bbb"},
           {kIcons, {kSixteen, {32, 32, 16, tallDib(2)}}, false, "cbb/bbb"},
           // One that cannot be read leaves its place to the other.
           {kIcons, {{32, 32, 16, smallDib(24)}, kTwo}, false, "abb/bbb" + colours + "24" + depth},
           {kCursors, {kSixteen}, false, "|none"},
           {3, {kSixteen}, true, "|none"},
           {kIcons, {}, false, "|none"},
           {kIcons, {{16, 32, 16, smallDib(4)}}, false, "|none"},
           {kIcons, {{32, 16, 2, smallDib(1)}}, false, "|none"},
           {kIcons, {{32, 32, 0, smallDib(8)}}, false, depth},
           {kIcons, {{32, 32, 0, smallDib(32)}}, false, colours + "32" + depth},
           {kIcons, {kPacked}, false, "|Unsupported icon header type, length=1196314761"},
           {kCursors, {kPacked}, true, "|Unsupported cursor header type, length=1196314761"},
           {kIcons, {{32, 32, 16, tallDib(1)}}, false, noImage},
           {kIcons, {{32, 32, 16, tallDib(0xFFFFFFFE)}}, false, noImage},
       }) {
    const Bytes data = directoryOf(row.type, row.images);
    const auto image = row.asCursor ? decodeCursor(data, "none") : decodeIcon(data, "none");
    EXPECT_EQ(told(image.picture, image.messages), row.outcome);
    EXPECT_EQ(windowManagerIcon(image).empty(), row.outcome.front() == '|');
  }
}

TEST(Icon, HasAMaskBehindThePictureAndItsWordsForWindowManagers) {
  const ziMaskedPicture icon = decodeIcon(directoryOf(kIcons, {kSixteen}), "none");
  EXPECT_EQ(shown(icon.mask), "aab/aaa");
  EXPECT_THAT(opaqueBits(icon).bits, ElementsAre(0x3, 0x7));
  EXPECT_THAT(windowManagerIcon(icon),
              ElementsAre(3, 2, 0xFF060402, 0xFF030201, 0, 0xFF030201, 0xFF030201, 0xFF030201));
  ziMaskedPicture wide;
  wide.picture = wide.mask = ziPicture(10, 2);
  wide.mask.put(8, 0, 1);
  EXPECT_THAT(opaqueBits(wide).bits, ElementsAre(0xFF, 0x3, 0xFF, 0x2));
  // An offset beyond the data is refused by the header there.
  Bytes data = directoryOf(kIcons, {kSixteen});
  data[6 + 15] = 0x7F;
  EXPECT_THAT(decodeIcon(data, "none").messages,
              ElementsAre("Unsupported icon header type, length=0"));
}

TEST(CursorImage, KeepsItsHotSpotInsideAndShowsLightPixels) {
  EXPECT_EQ(decodeCursor(directoryOf(kCursors, {kSixteen}), "").hotSpot, (zPoint{1, 1}));
  ziMaskedPicture image;
  image.picture = image.mask = ziPicture(4, 1);
  image.picture.colours = {0x000000, 0xFFFFFF, 0x808080, 0x7F8080};
  for (int x = 0; x < 4; ++x) {
    image.picture.put(x, 0, static_cast<std::uint16_t>(x));
  }
  EXPECT_THAT(lightBits(image).bits, ElementsAre(0x6));
}

TEST(BuiltInPictures, DecodeWholeToTheirSizes) {
  std::string sizes;
  for (const auto& [type, id] : {std::pair{kResourceBitmap, kBitmapOpen},
                                 {kResourceBitmap, kBitmapHelp},
                                 {kResourceBitmap, kBitmapOrganizer},
                                 {kResourceBitmap, kBitmapZoomIn},
                                 {kResourceBitmap, kBitmapZoomOut},
                                 {kResourceBitmap, kBitmapBanner},
                                 {kResourceIcon, kIconMain},
                                 {kResourceIcon, kIconText}}) {
    const auto bytes = builtInPicture(type, id);
    const bool isIcon = type == kResourceIcon;
    const ziPicture picture = isIcon ? decodeIcon(bytes, "").picture : decodeBmp(bytes).picture;
    EXPECT_EQ(picture.colours.size(), isIcon ? 16U : 256U);
    EXPECT_EQ(shown(picture).find('.'), std::string::npos) << id;
    sizes += std::to_string(picture.width()) + 'x' + std::to_string(picture.height()) + ' ';
  }
  EXPECT_EQ(sizes, "16x16 16x16 16x16 19x18 16x16 150x30 32x32 32x32 ");
}

}  // namespace
