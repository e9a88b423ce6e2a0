#include "framework/draw/pictures.h"

#include <string>
#include <utility>

#include "framework/draw/image/picture.h"
#include "framework/draw/res_id.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_pictures.h"

#include <X11/Xlib.h>

namespace {

ziDrawMessageSink theSink = nullptr;

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

void setDrawMessageSink(ziDrawMessageSink sink) {
  theSink = sink;
}

void drawMessage(const std::string& text) {
  if (theSink != nullptr) {
    theSink(text);
  }
}

zBitmap::zBitmap(const zResId& resource) : zDrawObj(false) {
  const ziResource found(resource, kResourceBitmap);
  if (!found) {
    drawMessage(unableToFind("zBitmap", "bitmap", resource));
    return;
  }
  decode(found.bytes());
}

zBitmap::zBitmap(int width, int height) : zDrawObj(false) {
  adopt(blankPixmap(width, height), {width, height});
}

void zBitmap::decode(std::span<const std::uint8_t> bytes) {
  const ziDecodedBitmap decoded = decodeBmp(bytes);
  reportMessages(decoded.messages);
  adopt(pixmapOf(decoded.picture), {decoded.picture.width(), decoded.picture.height()});
}

void zBitmap::adopt(ziPixmapHandle newPixmap, const zDimension& newSize) {
  if (!newPixmap) {
    return;
  }
  owned = std::move(newPixmap);
  extents = newSize;
  Display* display = theScreen().display;
  bits = DefaultDepth(display, DefaultScreen(display));
}

zIcon::zIcon(const zResId& resource) {
  const ziResource found(resource, kResourceIcon);
  // What leads to no picture counts as not there.
  const std::string notFound = unableToFind("zIcon", "icon", resource);
  if (!found) {
    drawMessage(notFound);
    return;
  }
  decode(found.bytes(), notFound);
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

zCursor::zCursor(Display* display, unsigned fontShape)
    : cursor(std::make_shared<Shared>(display, XCreateFontCursor(display, fontShape))) {}

zCursor::Shared::~Shared() {
  if (id != 0) {
    XFreeCursor(display, id);
  }
}
