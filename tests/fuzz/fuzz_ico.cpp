// Any bytes decode, as icon and as cursor, to a picture with a mask of its size, or to none.

#include "framework/draw/image/picture.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

void check(const ziMaskedPicture& image) {
  if (image.picture.isEmpty()) {
    require(windowManagerIcon(image).empty());
    return;
  }
  require(image.mask.width() == image.picture.width());
  require(image.mask.height() == image.picture.height());
  require(image.hotSpot.x < image.picture.width() && image.hotSpot.y < image.picture.height());
  const auto area = static_cast<std::size_t>(image.picture.width()) *
                    static_cast<std::size_t>(image.picture.height());
  require(windowManagerIcon(image).size() == 2 + area);
  require(opaqueBits(image).bits.size() == lightBits(image).bits.size());
}

}  // namespace

void fuzz(std::span<const std::uint8_t> data) {
  check(decodeIcon(data, {}));
  check(decodeCursor(data, {}));
}
