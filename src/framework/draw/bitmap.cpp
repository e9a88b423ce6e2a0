#include "framework/draw/bitmap.h"

#include <string>
#include <utility>

#include "framework/draw/draw_message.h"
#include "framework/draw/image/bmp.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_pictures.h"

#include <X11/Xlib.h>

namespace {

constexpr const char* kReader = "zBitmap::zBitmap";

}  // namespace

zBitmap::zBitmap(const zResId& resource) : zDrawObj(false) {
  const ziResource found(resource, kResourceBitmap);
  if (!found) {
    drawMessage(std::string(kReader) + " Unable to find bitmap with resId(" +
                std::to_string(static_cast<std::int32_t>(resource.id)) + ")");
    return;
  }
  decode(found.bytes());
}

zBitmap::zBitmap(const char* fileName) : zDrawObj(false) {
  if (const auto bytes = readPictureFile(kReader, fileName)) {
    decode(*bytes);
  }
}

zBitmap::zBitmap(int width, int height) : zDrawObj(false) {
  adopt(blankPixmap(width, height), {width, height});
}

// A picture fits every display of the screen, so that the display makes no difference.
zBitmap::zBitmap(zDisplay* /*display*/, zBitmap& source) : zDrawObj(false), origin(source.origin) {
  if (source.isEmpty()) {
    return;
  }
  adopt(blankPixmap(source.width(), source.height()), source.size());
  if (isEmpty()) {
    return;
  }
  Display* server = theScreen().display;
  XGCValues values{};
  values.graphics_exposures = False;
  const ziGcHandle gc(server, XCreateGC(server, pixmap(), GCGraphicsExposures, &values));
  XCopyArea(server, source.pixmap(), pixmap(), gc.get(), 0, 0, static_cast<unsigned>(width()),
            static_cast<unsigned>(height()), 0, 0);
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
