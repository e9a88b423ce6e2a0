#include "framework/draw/image/dib.h"

#include <algorithm>

#include "framework/draw/image/picture.h"

namespace {

constexpr unsigned kBitsPerByte = 8;
constexpr std::size_t kRowAlignment = 4;
constexpr std::uint64_t kBytesPerColour = 4;
constexpr unsigned kRedShift = 16;
constexpr unsigned kGreenShift = 8;

// Entries of the colour table; 0 for a depth that has none.
std::uint64_t colourCount(const ziDibHeader& header) {
  switch (header.bitsPerPixel) {
    case 1:
      // Intended: two, whatever the header says.
      return 2;
    case 4:
    case 8:
      return header.coloursUsed != 0 ? header.coloursUsed : std::uint64_t{1} << header.bitsPerPixel;
    default:
      return 0;
  }
}

std::uint32_t readColour(ziByteReader& in) {
  const std::uint32_t blue = in.u8();
  const std::uint32_t green = in.u8();
  const std::uint32_t red = in.u8();
  in.skip(1);
  return red << kRedShift | green << kGreenShift | blue;
}

enum Escape : std::uint8_t { kEndOfLine = 0, kEndOfBitmap = 1, kDelta = 2 };

constexpr int kNibbleBits = 4;
constexpr unsigned kNibbleMask = 0xF;

class Decoder {
 public:
  Decoder(ziByteReader& source, int bitsPerPixel, ziPicture& target)
      : in(source), areNibbles(bitsPerPixel == kNibbleBits), picture(target) {}

  void run() {
    while (!ended && !in.atEnd() && y < picture.height()) {
      const int count = in.u8();
      const std::uint8_t value = in.u8();
      if (count == 0) {
        escape(value);
      } else {
        encodedRun(count, value);
      }
    }
  }

 private:
  void escape(std::uint8_t code) {
    switch (code) {
      case kEndOfLine:
        x = 0;
        ++y;
        break;
      case kEndOfBitmap:
        ended = true;
        break;
      case kDelta:
        x += in.u8();
        y += in.u8();
        break;
      default:
        absoluteRun(code);
        break;
    }
  }

  void encodedRun(int count, std::uint8_t value) {
    for (int i = 0; i < count; ++i) {
      put(value, i);
    }
  }

  void absoluteRun(int count) {
    const int byteCount = areNibbles ? (count + 1) / 2 : count;
    const auto bytes = in.take(static_cast<std::size_t>(byteCount));
    for (int i = 0; i < count; ++i) {
      const auto byte = static_cast<std::size_t>(areNibbles ? i / 2 : i);
      if (byte >= bytes.size()) {
        return;
      }
      put(bytes[byte], i);
    }
    in.skip(static_cast<std::uint64_t>(byteCount % 2));
  }

  // The i-th pixel of a run: of nibbles, the high and the low one take turns.
  void put(std::uint8_t value, int i) {
    unsigned index = value;
    if (areNibbles) {
      index = i % 2 == 0 ? index >> kNibbleBits : index & kNibbleMask;
    }
    picture.put(x++, y, static_cast<std::uint16_t>(index));
  }

  ziByteReader& in;
  bool areNibbles;
  ziPicture& picture;
  std::int64_t x = 0;
  std::int64_t y = 0;  // from the bottom
  bool ended = false;
};

}  // namespace

bool ziPicture::isAcceptable(std::int64_t width, std::int64_t height, std::size_t bytes) {
  if (width <= 0 || width > kMaxExtent || height <= 0 || height > kMaxExtent) {
    return false;
  }
  const std::uint64_t area = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
  return area <= kFreeArea || (area <= kMaxArea && area / kMaxExpansion <= bytes);
}

ziDibHeader readDibHeader(ziByteReader& in) {
  ziDibHeader header;
  header.length = in.u32();
  if (header.length != ziDibHeader::kLength) {
    return header;
  }
  header.width = in.i32();
  header.height = in.i32();
  in.u16();  // planes
  header.bitsPerPixel = in.u16();
  header.compression = in.u32();
  in.u32();  // image size
  in.u32();  // horizontal and
  in.u32();  // vertical resolution
  header.coloursUsed = in.u32();
  in.u32();  // important colours
  return header;
}

std::string wrongDibHeader(const char* kind, const ziDibHeader& header) {
  return std::string("Unsupported ") + kind +
         " header type, length=" + std::to_string(static_cast<std::int32_t>(header.length));
}

std::vector<std::uint32_t> readColourTable(ziByteReader& in, const ziDibHeader& header,
                                           std::size_t pixelsAt, ziMessages& messages) {
  const std::uint64_t count = colourCount(header);
  if (count == 0) {
    messages.push_back(kUnsupportedColourTable + std::to_string(header.bitsPerPixel));
    return {};
  }
  const std::uint64_t most = std::uint64_t{1} << header.bitsPerPixel;
  if (count > most) {
    messages.push_back(kUnsupportedColourTable + std::to_string(count));
  }
  const std::uint64_t room = (pixelsAt - std::min(pixelsAt, in.position())) / kBytesPerColour;
  std::vector<std::uint32_t> table(static_cast<std::size_t>(std::min({count, most, room})));
  std::generate(table.begin(), table.end(), [&in] { return readColour(in); });
  in.skip((count - table.size()) * kBytesPerColour);
  return table;
}

void reportMissingColours(const ziPicture& picture, ziMessages& messages) {
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const std::uint16_t index = picture.at(x, y);
      if (index != ziPicture::kBlank && index >= picture.colours.size()) {
        messages.push_back(kUnsupportedColourTable + std::to_string(picture.colours.size()));
        return;
      }
    }
  }
}

ziPicture makePicture(std::int64_t width, std::int64_t height, const ziByteReader& in,
                      ziMessages& messages) {
  if (!ziPicture::isAcceptable(width, height, in.size())) {
    messages.emplace_back("Inable to create XImage");
    return {};
  }
  return {static_cast<int>(width), static_cast<int>(height)};
}

bool isReadableDepth(int bitsPerPixel) {
  return bitsPerPixel == 1 || bitsPerPixel == 4 || bitsPerPixel == 8;
}

void readPlainRows(ziByteReader& in, int bitsPerPixel, ziPicture& picture) {
  const auto bits = static_cast<unsigned>(bitsPerPixel);
  const auto width = static_cast<std::size_t>(picture.width());
  const std::size_t rowBytes = (width * bits + kBitsPerByte - 1) / kBitsPerByte;
  const std::size_t stride = (rowBytes + kRowAlignment - 1) / kRowAlignment * kRowAlignment;
  const unsigned mask = (1U << bits) - 1;
  for (int row = 0; row < picture.height() && !in.atEnd(); ++row) {
    const auto bytes = in.take(stride);
    const std::size_t present = std::min(width, bytes.size() * kBitsPerByte / bits);
    for (std::size_t x = 0; x < present; ++x) {
      const std::size_t bit = x * bits;
      const auto shift = static_cast<unsigned>(kBitsPerByte - bits - bit % kBitsPerByte);
      const unsigned index = static_cast<unsigned>(bytes[bit / kBitsPerByte]) >> shift & mask;
      picture.put(static_cast<std::int64_t>(x), row, static_cast<std::uint16_t>(index));
    }
  }
}

void readRunLengthRows(ziByteReader& in, int bitsPerPixel, ziPicture& picture) {
  Decoder(in, bitsPerPixel, picture).run();
}
