#include "framework/draw/image/picture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "image_data.h"
#include "resources/builtin_table.h"
#include "resources/resource_ids.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum DirectoryType : std::uint32_t { kIcons = 1, kCursors = 2 };

struct Image {
  std::uint32_t width = 32;
  std::uint32_t height = 32;
  std::uint32_t colours = 16;
  Dib dib;
};

// A picture of 3 by 2 pixels, whatever the directory says: colour 1 with a 2 at the left of the
// top row, transparent at its right.
Dib smallDib(std::uint32_t bits) {
  Dib dib;
  dib.width = 3;
  dib.height = 4;
  dib.bits = bits;
  dib.colours = 1U << bits;
  dib.pixels =
      bits == 1 ? Bytes{0xE0, 0, 0, 0, 0x60, 0, 0, 0} : Bytes{0x11, 0x10, 0, 0, 0x21, 0x10, 0, 0};
  dib.pixels.insert(dib.pixels.end(), {0, 0, 0, 0, 0x20, 0, 0, 0});
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

ziMaskedPicture iconOf(std::span<const std::uint8_t> data) {
  return decodeIcon(data, "none");
}
ziMaskedPicture cursorOf(std::span<const std::uint8_t> data) {
  return decodeCursor(data, "none");
}

TEST(Icon, HasHalfTheHeightOfItsHeaderAndAMaskBehindThePicture) {
  const ziMaskedPicture icon = iconOf(directoryOf(kIcons, {{32, 32, 16, smallDib(4)}}));
  EXPECT_THAT(icon.messages, IsEmpty());
  EXPECT_EQ(shown(icon.picture), "cbb/bbb");
  EXPECT_EQ(shown(icon.mask), "aab/aaa");
  EXPECT_THAT(opaqueBits(icon).bits, ElementsAre(0x3, 0x7));
  EXPECT_THAT(windowManagerIcon(icon),
              ElementsAre(3, 2, 0xFF060402, 0xFF030201, 0, 0xFF030201, 0xFF030201, 0xFF030201));
}

TEST(Icon, PrefersSixteenColoursAndACursorTwo) {
  const std::vector<Image> both{{32, 32, 2, smallDib(1)}, {32, 32, 16, smallDib(4)}};
  EXPECT_EQ(iconOf(directoryOf(kIcons, both)).picture.colours.size(), 16U);
  EXPECT_EQ(cursorOf(directoryOf(kCursors, both)).picture.colours.size(), 2U);
  EXPECT_EQ(iconOf(directoryOf(kIcons, {both[0]})).picture.colours.size(), 2U);
  const Image uncounted{32, 32, 0, smallDib(4)};
  EXPECT_EQ(iconOf(directoryOf(kIcons, {both[0], uncounted})).picture.colours.size(), 16U);
}

TEST(Icon, OfAnotherSizeNumberOfColoursOrTypeIsNotTakenAndSaysWhy) {
  Dib packed = smallDib(8);
  packed.length = 0x474E5089;
  Dib deep = smallDib(8);
  deep.bits = 32;
  const ziMessages noDepth{"Unsupported bits per pixel"};
  for (const auto& [image, messages] : std::vector<std::pair<Image, ziMessages>>{
           {{16, 16, 16, smallDib(4)}, {"none"}},
           {{32, 16, 2, smallDib(1)}, {"none"}},
           {{32, 32, 0, smallDib(8)}, noDepth},
           {{32, 32, 0, deep}, {"Unsupported color table type, num=32", noDepth[0]}},
           {{32, 32, 0, packed}, {"Unsupported icon header type, length=1196314761"}}}) {
    const ziMaskedPicture icon = iconOf(directoryOf(kIcons, {image}));
    EXPECT_TRUE(icon.picture.isEmpty());
    EXPECT_EQ(icon.messages, messages);
    EXPECT_THAT(windowManagerIcon(icon), IsEmpty());
  }
  const Bytes cursors = directoryOf(kCursors, {{32, 32, 16, smallDib(4)}});
  EXPECT_THAT(iconOf(cursors).messages, ElementsAre("none"));
  EXPECT_FALSE(cursorOf(cursors).picture.isEmpty());
}

TEST(Icon, ThatCannotBeReadLeavesItsPlaceToTheOther) {
  Dib deep = smallDib(8);
  deep.bits = 24;
  const ziMaskedPicture icon =
      iconOf(directoryOf(kIcons, {{32, 32, 16, deep}, {32, 32, 2, smallDib(1)}}));
  EXPECT_EQ(shown(icon.picture), "abb/bbb");
  EXPECT_THAT(icon.messages,
              ElementsAre("Unsupported color table type, num=24", "Unsupported bits per pixel"));
}

TEST(Icon, WithAnOffsetBeyondTheDataIsRefusedByItsHeader) {
  Bytes data = directoryOf(kIcons, {{32, 32, 16, smallDib(4)}});
  data[6 + 15] = 0x7F;
  EXPECT_THAT(iconOf(data).messages, ElementsAre("Unsupported icon header type, length=0"));
  EXPECT_THAT(cursorOf(data).messages, ElementsAre("Unsupported cursor header type, length=0"));
}

TEST(Icon, OfAnImpossibleSizeIsNone) {
  for (const std::uint32_t height : {0U, 1U, 0xFFFFFFFEU, 0x7FFFFFFFU}) {
    Dib dib = smallDib(4);
    dib.height = height;
    const ziMaskedPicture icon = iconOf(directoryOf(kIcons, {{32, 32, 16, dib}}));
    EXPECT_THAT(icon.messages, ElementsAre("Inable to create XImage")) << height;
    EXPECT_TRUE(icon.picture.isEmpty());
  }
}

TEST(CursorImage, KeepsItsHotSpotInsideAndShowsLightPixels) {
  Dib dib = smallDib(4);
  dib.colours = 1;
  const ziMaskedPicture dark = cursorOf(directoryOf(kCursors, {{32, 32, 16, dib}}));
  EXPECT_EQ(dark.hotSpot, (zPoint{1, 1}));

  ziMaskedPicture image;
  image.picture = image.mask = ziPicture(2, 1);
  image.picture.colours = {0x000000, 0xFFFFFF};
  image.picture.put(0, 0, 1);
  image.picture.put(1, 0, 0);
  EXPECT_THAT(lightBits(image).bits, ElementsAre(0x1));
}

struct BuiltIn {
  int type;
  std::uint32_t id;
  int width;
  int height;
};

TEST(BuiltInPictures, DecodeToTheirSizes) {
  for (const BuiltIn& wanted : {BuiltIn{kResourceBitmap, kBitmapOpen, 16, 16},
                                {kResourceBitmap, kBitmapHelp, 16, 16},
                                {kResourceBitmap, kBitmapOrganizer, 16, 16},
                                {kResourceBitmap, kBitmapZoomIn, 19, 18},
                                {kResourceBitmap, kBitmapZoomOut, 16, 16},
                                {kResourceBitmap, kBitmapBanner, 150, 30},
                                {kResourceIcon, kIconMain, 32, 32},
                                {kResourceIcon, kIconText, 32, 32}}) {
    const auto bytes = builtInPicture(wanted.type, wanted.id);
    ziPicture picture;
    if (wanted.type == kResourceIcon) {
      picture = iconOf(bytes).picture;
      EXPECT_EQ(picture.colours.size(), 16U);
    } else {
      picture = decodeBmp(bytes).picture;
      EXPECT_EQ(picture.colours.size(), 256U);
    }
    EXPECT_EQ(picture.width(), wanted.width) << wanted.id;
    EXPECT_EQ(picture.height(), wanted.height) << wanted.id;
    EXPECT_EQ(shown(picture).find('.'), std::string::npos) << wanted.id;
  }
}

}  // namespace
