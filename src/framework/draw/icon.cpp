#include "framework/draw/icon.h"

#include <string>

#include "framework/draw/draw_message.h"
#include "framework/draw/image/ico.h"
#include "framework/draw/x_pictures.h"

namespace {

constexpr const char* kReader = "zIcon::zIcon";

}  // namespace

zIcon::zIcon(const zResId& resource) {
  const ziResource found(resource, kResourceIcon);
  if (!found) {
    drawMessage(std::string(kReader) + " Unable to find icon with resId(" +
                std::to_string(static_cast<std::int32_t>(resource.id)) + ")");
    return;
  }
  decode(found.bytes());
}

zIcon::zIcon(const char* fileName) {
  if (const auto bytes = readPictureFile(kReader, fileName)) {
    decode(*bytes);
  }
}

void zIcon::decode(std::span<const std::uint8_t> bytes) {
  const ziMaskedPicture image = decodeIcon(bytes);
  reportMessages(image.messages);
  colourPixmap = pixmapOf(image.picture);
  if (!colourPixmap) {
    return;
  }
  maskPixmap = bitPixmapOf(opaqueBits(image));
  extents = {image.picture.width(), image.picture.height()};
  pixels = windowManagerIcon(image);
}

std::vector<unsigned long> iconPixels(const zResId& resource) {
  const ziResource found(resource, kResourceIcon);
  return found ? windowManagerIcon(decodeIcon(found.bytes())) : std::vector<unsigned long>();
}
