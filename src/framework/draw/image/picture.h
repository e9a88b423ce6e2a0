#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "support/geometry.h"

/// What decoding had to say, one text a fault.
using ziMessages = std::vector<std::string>;

/// A picture of up to 256 colours: an index into the colour table for each pixel, top row first.
class ziPicture {
 public:
  /// The index of a pixel that the data do not colour.
  static constexpr std::uint16_t kBlank = 0xFFFF;
  /// Extents beyond this are no picture: X counts coordinates in 16 bits.
  static constexpr int kMaxExtent = 32767;
  /// The largest area, in pixels.
  static constexpr std::uint64_t kMaxArea = std::uint64_t{16} << 20;
  /// An area up to this is taken from data of any size. A larger one needs data that could fill it:
  /// kMaxExpansion pixels a byte.
  static constexpr std::uint64_t kFreeArea = std::uint64_t{256} << 10;
  static constexpr std::uint64_t kMaxExpansion = 128;

  /// A picture without extent.
  ziPicture() = default;
  /// All pixels blank. The size must be acceptable.
  ziPicture(int pictureWidth, int pictureHeight)
      : extentX(pictureWidth),
        extentY(pictureHeight),
        pixels(static_cast<std::size_t>(pictureWidth) * static_cast<std::size_t>(pictureHeight),
               kBlank) {}

  /// Whether `bytes` bytes of data may claim a picture of this size.
  static bool isAcceptable(std::int64_t width, std::int64_t height, std::size_t bytes);

  int width() const { return extentX; }
  int height() const { return extentY; }
  bool isEmpty() const { return pixels.empty(); }
  /// The index of a pixel inside the picture.
  std::uint16_t at(int x, int y) const { return pixels[offset(x, y)]; }
  /// Does nothing outside the picture. `fromBottom` counts rows upwards, as the data do.
  void put(std::int64_t x, std::int64_t fromBottom, std::uint16_t index) {
    if (x >= 0 && x < extentX && fromBottom >= 0 && fromBottom < extentY) {
      pixels[offset(static_cast<int>(x), extentY - 1 - static_cast<int>(fromBottom))] = index;
    }
  }

  /// 24-bit RGB words, red in the top byte. Pixels may have indexes beyond it; they are as blank.
  std::vector<std::uint32_t> colours;

 private:
  std::size_t offset(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(extentX) +
           static_cast<std::size_t>(x);
  }

  int extentX = 0;
  int extentY = 0;
  std::vector<std::uint16_t> pixels;
};

struct ziDecodedBitmap {
  ziPicture picture;  ///< empty when the data were refused
  ziMessages messages;
};

/// Decodes BMP data of any content.
ziDecodedBitmap decodeBmp(std::span<const std::uint8_t> bytes);

/// An image of an icon or a cursor: a picture, and where it lets the ground through.
struct ziMaskedPicture {
  ziPicture picture;  ///< empty when the data hold no image that can be used
  ziPicture mask;     ///< of the same size; 1 where the ground shows
  zPoint hotSpot;     ///< of a cursor; inside the picture
  ziMessages messages;

  bool isTransparent(int x, int y) const { return mask.at(x, y) == 1; }
  /// The RGB word of a pixel; black for a blank one.
  std::uint32_t colourAt(int x, int y) const;
};

/// Decodes ICO data of any content: its image of 32 by 32 with 16 colours, or else with 2. Data
/// without an image of this size get the message `noImage`.
ziMaskedPicture decodeIcon(std::span<const std::uint8_t> bytes, const std::string& noImage);

/// Decodes CUR data of any content: its image of 32 by 32 with 2 colours, or else with 16.
ziMaskedPicture decodeCursor(std::span<const std::uint8_t> bytes, const std::string& noImage);

/// The picture as the property _NET_WM_ICON takes it: width, height, then ARGB words row by row.
/// Empty for an empty picture.
std::vector<unsigned long> windowManagerIcon(const ziMaskedPicture& icon);

/// One bit a pixel, rows padded to bytes, lowest bit first, as X's bitmap data are.
struct ziBitRows {
  std::vector<std::uint8_t> bits;
  int width = 0;
  int height = 0;
};

/// Where the picture covers the ground.
ziBitRows opaqueBits(const ziMaskedPicture& image);
/// The light pixels of a picture that is to be shown in two colours.
ziBitRows lightBits(const ziMaskedPicture& image);
