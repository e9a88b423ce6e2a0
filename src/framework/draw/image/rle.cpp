#include "framework/draw/image/rle.h"

namespace {

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

void readRunLengthRows(ziByteReader& in, int bitsPerPixel, ziPicture& picture) {
  Decoder(in, bitsPerPixel, picture).run();
}
