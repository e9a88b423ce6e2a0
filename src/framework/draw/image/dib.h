#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "framework/draw/image/byte_reader.h"
#include "framework/draw/image/picture.h"

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
