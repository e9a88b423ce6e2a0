// Any bytes decode to a picture within the limits, or to none.

#include "framework/draw/image/picture.h"
#include "tests/fuzz/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ziDecodedBitmap decoded = decodeBmp({data, size});
  const ziPicture& picture = decoded.picture;
  if (picture.isEmpty()) {
    require(!decoded.messages.empty());
    return 0;
  }
  require(ziPicture::isAcceptable(picture.width(), picture.height(), size));
  return 0;
}
