#include "framework/draw/image/picture.h"

#include <algorithm>

bool ziPicture::isAcceptable(std::int64_t width, std::int64_t height, std::size_t bytes) {
  if (width <= 0 || width > kMaxExtent || height <= 0 || height > kMaxExtent) {
    return false;
  }
  const std::uint64_t area = static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(height);
  return area <= kFreeArea || (area <= kMaxArea && area / kMaxExpansion <= bytes);
}
