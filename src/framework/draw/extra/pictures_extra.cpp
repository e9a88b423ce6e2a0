// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.
// Pictures from files, copies of pictures, cursors from resources.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>

#include "framework/draw/pictures.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_pictures.h"

#include <X11/Xlib.h>

namespace {

constexpr const char* kIconReader = "zIcon::zIcon";
constexpr std::uintmax_t kMaxFileSize = std::uintmax_t{64} << 20;

XColor namedColour(Display* display, const char* name) {
  XColor colour{};
  XParseColor(display, DefaultColormap(display, DefaultScreen(display)), name, &colour);
  return colour;
}

// 0 when there is nothing to show.
Cursor makeCursor(const ziMaskedPicture& image) {
  Display* display = theScreen().display;
  const ziPixmapHandle source = bitPixmapOf(lightBits(image));
  const ziPixmapHandle mask = bitPixmapOf(opaqueBits(image));
  if (!source || !mask) {
    return 0;
  }
  XColor foreground = namedColour(display, "white");
  XColor background = namedColour(display, "black");
  return XCreatePixmapCursor(display, source.get(), mask.get(), &foreground, &background,
                             static_cast<unsigned>(image.hotSpot.x),
                             static_cast<unsigned>(image.hotSpot.y));
}

// Nothing, with a message that begins with `reader`, if the file cannot be read.
std::optional<std::vector<std::uint8_t>> readPictureFile(const char* reader, const char* fileName) {
  const std::string name = fileName == nullptr ? "" : fileName;
  const std::string unable = std::string(reader) + " Unable to ";
  std::error_code error;
  if (!std::filesystem::exists(name, error)) {
    drawMessage(unable + "find file " + name);
    return std::nullopt;
  }
  // Only regular files have an end that can be relied on.
  std::ifstream file;
  if (std::filesystem::is_regular_file(name, error)) {
    file.open(name, std::ios::binary);
  }
  if (!file.is_open()) {
    drawMessage(unable + "open file " + name);
    return std::nullopt;
  }
  const std::uintmax_t size = std::filesystem::file_size(name, error);
  std::vector<char> bytes(error ? 0 : static_cast<std::size_t>(std::min(size, kMaxFileSize)));
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
}

}  // namespace

zBitmap::zBitmap(const char* fileName) : zDrawObj(false) {
  if (const auto bytes = readPictureFile("zBitmap::zBitmap", fileName)) {
    decode(*bytes);
  }
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

zIcon::zIcon(const char* fileName) {
  if (const auto bytes = readPictureFile(kIconReader, fileName)) {
    decode(*bytes, std::string(kIconReader) + " Unable to open file " + fileName);
  }
}

zCursor::zCursor(const zResId& resource) {
  const ziResource found(resource, kResourceCursor);
  const std::string notFound = unableToFind("zCursor", "cursor", resource);
  if (!found) {
    drawMessage(notFound);
    return;
  }
  const ziMaskedPicture image = decodeCursor(found.bytes(), notFound);
  reportMessages(image.messages);
  if (const Cursor made = makeCursor(image)) {
    cursor = std::make_shared<Shared>(theScreen().display, made);
  }
}
