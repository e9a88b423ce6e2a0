#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "framework/draw/image/picture.h"

/// Reads little-endian numbers from bytes of any content. Beyond the end everything reads as 0.
class ziByteReader {
 public:
  explicit ziByteReader(std::span<const std::uint8_t> data) : bytes(data) {}

  std::uint8_t u8() { return atEnd() ? std::uint8_t{0} : bytes[at++]; }
  std::uint16_t u16() {
    const unsigned low = u8();
    return static_cast<std::uint16_t>(low | static_cast<unsigned>(u8()) << kByteBits);
  }
  std::uint32_t u32() {
    const std::uint32_t low = u16();
    return low | static_cast<std::uint32_t>(u16()) << (2 * kByteBits);
  }
  std::int32_t i32() { return static_cast<std::int32_t>(u32()); }

  void skip(std::uint64_t count) {
    at += static_cast<std::size_t>(std::min<std::uint64_t>(count, remaining()));
  }
  void seek(std::size_t position) { at = std::min(position, bytes.size()); }
  /// The next `count` bytes, or as many as there are.
  std::span<const std::uint8_t> take(std::size_t count) {
    const auto taken = bytes.subspan(at, std::min(count, remaining()));
    at += taken.size();
    return taken;
  }

  std::size_t position() const { return at; }
  std::size_t size() const { return bytes.size(); }
  std::size_t remaining() const { return bytes.size() - at; }
  bool atEnd() const { return at == bytes.size(); }

 private:
  static constexpr unsigned kByteBits = 8;

  std::span<const std::uint8_t> bytes;
  std::size_t at = 0;
};

/// Device-independent bitmaps: what BMP, ICO and CUR data have in common.

struct ziDibHeader {
  static constexpr std::uint32_t kLength = 40;  ///< the only form that is read

  std::uint32_t length = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::uint16_t bitsPerPixel = 0;
  std::uint32_t compression = 0;
  std::uint32_t coloursUsed = 0;
};

/// Reads the length, and the rest only if the length is right.
ziDibHeader readDibHeader(ziByteReader& in);

/// The message that refuses a header; `kind` is "bitmap", "icon" or "cursor".
std::string wrongDibHeader(const char* kind, const ziDibHeader& header);

inline constexpr const char* kUnsupportedColourTable = "Unsupported color table type, num=";

/// Reads the colour table; empty, with a message, for a depth that has none. It ends at `pixelsAt`
/// at the latest; one that counts more colours than pixels can name is cut, with a message.
std::vector<std::uint32_t> readColourTable(ziByteReader& in, const ziDibHeader& header,
                                           std::size_t pixelsAt, ziMessages& messages);

/// A message if pixels name colours that the picture's table does not have.
void reportMissingColours(const ziPicture& picture, ziMessages& messages);

/// A blank picture of this size; an empty one, with a message, if it cannot be.
ziPicture makePicture(std::int64_t width, std::int64_t height, const ziByteReader& in,
                      ziMessages& messages);

/// Whether uncompressed pixels of this depth can be read.
bool isReadableDepth(int bitsPerPixel);
inline constexpr const char* kUnsupportedBitsPerPixel = "Unsupported bits per pixel";

/// Reads uncompressed rows, bottom row first, each padded to a multiple of four bytes. Pixels that
/// the data do not reach stay blank.
void readPlainRows(ziByteReader& in, int bitsPerPixel, ziPicture& picture);

/// The run-length codings RLE4 and RLE8. Ends with the end-of-bitmap escape, with the data, or when
/// the rows leave the picture; runs are cut at its right edge. Pixels that nothing colours stay
/// blank.
void readRunLengthRows(ziByteReader& in, int bitsPerPixel, ziPicture& picture);
