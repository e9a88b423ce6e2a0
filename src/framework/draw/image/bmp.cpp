#include "framework/draw/image/picture.h"

#include "framework/draw/image/dib.h"

// A file header of 14 bytes, an info header, a colour table, pixels. Nothing of the file header is
// checked: an offset of the pixels that points into the headers or beyond the data is passed over.

namespace {

constexpr std::uint64_t kBeforePixelOffset = 10;

enum Compression : std::uint32_t { kPlain = 0, kRunLength8 = 1 };
enum Depth : int { kNibblePixels = 4, kBytePixels = 8 };

bool isRunLengthCoded(const ziDibHeader& header) {
  // Intended: any compression of four bits is taken for their run-length coding.
  return header.bitsPerPixel == kNibblePixels
             ? header.compression != kPlain
             : header.bitsPerPixel == kBytePixels && header.compression == kRunLength8;
}

void readPixels(ziByteReader& in, const ziDibHeader& header, ziDecodedBitmap& result) {
  ziPicture& picture = result.picture;
  const int bits = header.bitsPerPixel;
  if (!isReadableDepth(bits)) {
    result.messages.emplace_back(kUnsupportedBitsPerPixel);
    picture = {};
  } else if (isRunLengthCoded(header)) {
    readRunLengthRows(in, bits, picture);
  } else if (bits == kBytePixels && header.compression != kPlain) {
    // Intended: the picture is kept, blank.
    result.messages.emplace_back("Unsupported compression: 8 bit RLE4");
  } else {
    readPlainRows(in, bits, picture);
  }
}

}  // namespace

ziDecodedBitmap decodeBmp(std::span<const std::uint8_t> bytes) {
  ziDecodedBitmap result;
  ziByteReader in(bytes);
  in.skip(kBeforePixelOffset);
  const std::size_t pixelOffset = in.u32();
  const ziDibHeader header = readDibHeader(in);
  if (header.length != ziDibHeader::kLength) {
    result.messages.push_back(wrongDibHeader("bitmap", header));
    return result;
  }
  const bool isOffsetGood = pixelOffset >= in.position() && pixelOffset < in.size();
  const std::size_t pixelsAt = isOffsetGood ? pixelOffset : in.size();
  std::vector<std::uint32_t> colours = readColourTable(in, header, pixelsAt, result.messages);
  result.picture = makePicture(header.width, header.height, in, result.messages);
  if (result.picture.isEmpty()) {
    return result;
  }
  if (isOffsetGood) {
    in.seek(pixelOffset);
  }
  readPixels(in, header, result);
  if (!result.picture.isEmpty()) {
    result.picture.colours = std::move(colours);
    reportMissingColours(result.picture, result.messages);
  }
  return result;
}
