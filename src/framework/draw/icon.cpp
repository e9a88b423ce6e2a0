#include "framework/draw/icon.h"

#include <string>

#include "framework/draw/draw_message.h"
#include "framework/draw/image/ico.h"
#include "framework/draw/x_pictures.h"

namespace {

constexpr const char* kReader = "zIcon::zIcon";
constexpr std::uint32_t kUnderMask = 0xC0C0C0;

// Some window managers show an icon without its mask: then what is left out is the face colour of
// furniture, not the black that the data have there.
void colourUnderMask(ziMaskedPicture& image) {
  ziPicture& picture = image.picture;
  const auto index = static_cast<std::uint16_t>(picture.colours.size());
  picture.colours.push_back(kUnderMask);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (image.isTransparent(x, y)) {
        picture.put(x, picture.height() - 1 - y, index);
      }
    }
  }
}

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
  ziMaskedPicture image = decodeIcon(bytes);
  reportMessages(image.messages);
  colourUnderMask(image);
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
