#include "framework/draw/image/picture.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "framework/draw/image/dib.h"

// A directory of 6 bytes, an entry of 16 bytes for each image, then the images: an info header
// whose height counts the picture and the mask, a colour table, the picture, the mask.

namespace {

constexpr std::uint16_t kIconType = 1;
constexpr std::uint16_t kCursorType = 2;
constexpr int kExtent = 32;
constexpr int kTwoColours = 2;
constexpr int kSixteenColours = 16;

struct Kind {
  const char* name;
  std::uint16_t otherType;  // accepted besides an icon's
  int preferredColours;
};
constexpr Kind kIcon{"icon", kIconType, kSixteenColours};
// Cursors name themselves by a type of their own, and by that of icons.
constexpr Kind kCursor{"cursor", kCursorType, kTwoColours};

struct Entry {
  std::size_t offset = 0;
  zPoint hotSpot;
};

struct Directory {
  std::optional<Entry> twoColours;
  std::optional<Entry> sixteenColours;
  std::optional<Entry> other;  // of the right size
};

// A directory has room for 255 colours; 0 leaves the answer to the image.
int colourCountOf(const ziByteReader& in, std::size_t imageOffset) {
  ziByteReader image = in;
  image.seek(imageOffset);
  const int bits = readDibHeader(image).bitsPerPixel;
  return bits == 1 || bits == 4 ? 1 << bits : 0;
}

Directory readDirectory(ziByteReader& in, const Kind& kind) {
  Directory directory;
  in.u16();  // reserved
  const std::uint16_t type = in.u16();
  if (type != kIconType && type != kind.otherType) {
    return directory;
  }
  const int count = in.u16();
  for (int i = 0; i < count && !in.atEnd(); ++i) {
    const int width = in.u8();
    const int height = in.u8();
    int colours = in.u8();
    in.u8();  // reserved
    Entry entry;
    entry.hotSpot.x = in.u16();
    entry.hotSpot.y = in.u16();
    in.u32();  // size
    entry.offset = in.u32();
    if (width != kExtent || height != kExtent) {
      continue;
    }
    colours = colours != 0 ? colours : colourCountOf(in, entry.offset);
    std::optional<Entry>& place = colours == kTwoColours       ? directory.twoColours
                                  : colours == kSixteenColours ? directory.sixteenColours
                                                               : directory.other;
    place = place ? place : entry;
  }
  return directory;
}

// What is empty afterwards could not be used.
ziMaskedPicture decodeImage(ziByteReader& in, const Entry& entry, const Kind& kind) {
  ziMaskedPicture image;
  in.seek(entry.offset);
  const ziDibHeader header = readDibHeader(in);
  if (header.length != ziDibHeader::kLength) {
    image.messages.push_back(wrongDibHeader(kind.name, header));
    return image;
  }
  std::vector<std::uint32_t> colours = readColourTable(in, header, in.size(), image.messages);
  ziPicture picture = makePicture(header.width, header.height / 2, in, image.messages);
  if (picture.isEmpty()) {
    return image;
  }
  if (!isReadableDepth(header.bitsPerPixel)) {
    image.messages.emplace_back(kUnsupportedBitsPerPixel);
    return image;
  }
  readPlainRows(in, header.bitsPerPixel, picture);
  picture.colours = std::move(colours);
  reportMissingColours(picture, image.messages);
  image.mask = ziPicture(picture.width(), picture.height());
  readPlainRows(in, 1, image.mask);
  image.hotSpot = {std::min(entry.hotSpot.x, picture.width() - 1),
                   std::min(entry.hotSpot.y, picture.height() - 1)};
  image.picture = std::move(picture);
  return image;
}

// Why an image of the right size is not among those that are shown.
ziMessages refusalOf(ziByteReader& in, const Entry& entry, const Kind& kind) {
  in.seek(entry.offset);
  const ziDibHeader header = readDibHeader(in);
  if (header.length != ziDibHeader::kLength) {
    return {wrongDibHeader(kind.name, header)};
  }
  ziMessages messages;
  readColourTable(in, header, in.size(), messages);
  messages.emplace_back(kUnsupportedBitsPerPixel);
  return messages;
}

ziMaskedPicture decodeBest(std::span<const std::uint8_t> bytes, const Kind& kind,
                           const std::string& noImage) {
  ziByteReader in(bytes);
  const Directory directory = readDirectory(in, kind);
  const bool prefersTwo = kind.preferredColours == kTwoColours;
  const auto& preferred = prefersTwo ? directory.twoColours : directory.sixteenColours;
  const auto& other = prefersTwo ? directory.sixteenColours : directory.twoColours;
  ziMaskedPicture best;
  if (preferred) {
    best = decodeImage(in, *preferred, kind);
  }
  if (best.picture.isEmpty() && other) {
    ziMessages before = std::move(best.messages);
    best = decodeImage(in, *other, kind);
    best.messages.insert(best.messages.begin(), before.begin(), before.end());
  }
  if (!preferred && !other) {
    best.messages = {noImage};
    if (directory.other) {
      best.messages = refusalOf(in, *directory.other, kind);
    }
  }
  return best;
}

template <typename IsSet>
ziBitRows bitRows(const ziPicture& picture, IsSet isSet) {
  constexpr int kByteBits = 8;
  const int stride = (picture.width() + kByteBits - 1) / kByteBits;
  ziBitRows rows{{}, picture.width(), picture.height()};
  rows.bits.resize(static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows.height));
  for (int y = 0; y < rows.height; ++y) {
    for (int x = 0; x < rows.width; ++x) {
      if (isSet(x, y)) {
        const auto byte = static_cast<std::size_t>(y) * static_cast<std::size_t>(stride) +
                          static_cast<std::size_t>(x / kByteBits);
        rows.bits[byte] = static_cast<std::uint8_t>(rows.bits[byte] | 1U << (x % kByteBits));
      }
    }
  }
  return rows;
}

bool isLight(std::uint32_t rgb) {
  constexpr std::uint32_t kByte = 0xFF;
  constexpr std::uint32_t kHalf = 3 * 128;
  return (rgb >> 16 & kByte) + (rgb >> 8 & kByte) + (rgb & kByte) >= kHalf;
}

}  // namespace

std::uint32_t ziMaskedPicture::colourAt(int x, int y) const {
  const std::uint16_t index = picture.at(x, y);
  return index < picture.colours.size() ? picture.colours[index] : 0;
}

ziMaskedPicture decodeIcon(std::span<const std::uint8_t> bytes, const std::string& noImage) {
  return decodeBest(bytes, kIcon, noImage);
}

ziMaskedPicture decodeCursor(std::span<const std::uint8_t> bytes, const std::string& noImage) {
  return decodeBest(bytes, kCursor, noImage);
}

std::vector<unsigned long> windowManagerIcon(const ziMaskedPicture& icon) {
  constexpr unsigned long kOpaque = 0xFF000000UL;
  if (icon.picture.isEmpty()) {
    return {};
  }
  const int width = icon.picture.width();
  const int height = icon.picture.height();
  std::vector<unsigned long> words{static_cast<unsigned long>(width),
                                   static_cast<unsigned long>(height)};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      words.push_back(icon.isTransparent(x, y) ? 0 : kOpaque | icon.colourAt(x, y));
    }
  }
  return words;
}

ziBitRows opaqueBits(const ziMaskedPicture& image) {
  return bitRows(image.picture, [&image](int x, int y) { return !image.isTransparent(x, y); });
}

ziBitRows lightBits(const ziMaskedPicture& image) {
  return bitRows(image.picture, [&image](int x, int y) { return isLight(image.colourAt(x, y)); });
}
