#include "framework/draw/icon.h"

#include <string>

#include "framework/draw/draw_message.h"
#include "framework/draw/image/ico.h"
#include "framework/draw/x_pictures.h"

namespace {

constexpr const char* kReader = "zIcon::zIcon";
// What leads to no picture counts as not there.
std::string unableToFind(const zResId& resource) {
  return std::string(kReader) + " Unable to find icon with resId(" +
         std::to_string(static_cast<std::int32_t>(resource.id)) + ")";
}

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
    drawMessage(unableToFind(resource));
    return;
  }
  decode(found.bytes(), unableToFind(resource));
}

zIcon::zIcon(const char* fileName) {
  if (const auto bytes = readPictureFile(kReader, fileName)) {
    decode(*bytes, std::string(kReader) + " Unable to open file " + fileName);
  }
}

void zIcon::decode(std::span<const std::uint8_t> bytes, const std::string& noImage) {
  ziMaskedPicture image = decodeIcon(bytes, noImage);
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
  return found ? windowManagerIcon(decodeIcon(found.bytes(), {})) : std::vector<unsigned long>();
}
