#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

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
