// Any bytes decode, as bitmap, icon and cursor, to a picture within the limits with a mask of its
// size, or to none.

#include "framework/draw/image/picture.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  const auto [bitmap, messages] = decodeBmp(data);
  require(bitmap.isEmpty() ? !messages.empty()
                           : ziPicture::isAcceptable(bitmap.width(), bitmap.height(), data.size()));
  for (const ziMaskedPicture& image : {decodeIcon(data, {}), decodeCursor(data, {})}) {
    const int width = image.picture.width();
    const int height = image.picture.height();
    const auto area = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    require(windowManagerIcon(image).size() == (area == 0 ? 0 : 2 + area));
    require(image.mask.width() == width && image.mask.height() == height);
    require(area == 0 || (image.hotSpot.x < width && image.hotSpot.y < height));
    require(area == 0 || opaqueBits(image).bits.size() == lightBits(image).bits.size());
  }
}
