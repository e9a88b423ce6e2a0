// Any bytes decode to a picture within the limits, or to none.

#include "framework/draw/image/picture.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  const auto [picture, messages] = decodeBmp(data);
  require(picture.isEmpty()
              ? !messages.empty()
              : ziPicture::isAcceptable(picture.width(), picture.height(), data.size()));
}
