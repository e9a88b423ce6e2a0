#include "framework/draw/x_pictures.h"

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>

#include "framework/draw/pictures.h"
#include "framework/draw/screen.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace {

struct ImageDestroy {
  void operator()(XImage* image) const { XDestroyImage(image); }
};
using ImageHandle = std::unique_ptr<XImage, ImageDestroy>;

// Pixels of a colour table, each looked up when a pixel of the picture first uses it.
class PixelTable {
 public:
  explicit PixelTable(const std::vector<std::uint32_t>& table)
      : colours(table), pixels(table.size()) {}

  unsigned long pixel(std::uint16_t index) {
    if (index >= colours.size()) {
      return 0;
    }
    auto& known = pixels[index];
    if (!known) {
      known = pixelOf(zColor(colours[index]));
    }
    return *known;
  }

 private:
  const std::vector<std::uint32_t>& colours;
  std::vector<std::optional<unsigned long>> pixels;
};

ImageHandle makeImage(Display* display, int width, int height) {
  const int screen = DefaultScreen(display);
  ImageHandle image(XCreateImage(display, DefaultVisual(display, screen),
                                 static_cast<unsigned>(DefaultDepth(display, screen)), ZPixmap, 0,
                                 nullptr, static_cast<unsigned>(width),
                                 static_cast<unsigned>(height), XBitmapPad(display), 0));
  if (image != nullptr) {
    // XDestroyImage frees the data by free().
    image->data = static_cast<char*>(std::calloc(static_cast<std::size_t>(height),
                                                 static_cast<std::size_t>(image->bytes_per_line)));
  }
  if (image == nullptr || image->data == nullptr) {
    drawMessage("Inable to create XImage");
    return nullptr;
  }
  return image;
}

void fill(XImage& image, const ziPicture& picture) {
  PixelTable table(picture.colours);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      XPutPixel(&image, x, y, table.pixel(picture.at(x, y)));
    }
  }
}

}  // namespace

ziPixmapHandle blankPixmap(int width, int height) {
  Display* display = theScreen().display;
  const auto area = static_cast<std::size_t>(ziPicture::kMaxArea);
  if (display == nullptr || !ziPicture::isAcceptable(width, height, area)) {
    return {};
  }
  const int screen = DefaultScreen(display);
  return {display, XCreatePixmap(display, RootWindow(display, screen), static_cast<unsigned>(width),
                                 static_cast<unsigned>(height),
                                 static_cast<unsigned>(DefaultDepth(display, screen)))};
}

ziPixmapHandle pixmapOf(const ziPicture& picture) {
  ziPixmapHandle pixmap = blankPixmap(picture.width(), picture.height());
  if (!pixmap) {
    return {};
  }
  Display* display = theScreen().display;
  const ImageHandle image = makeImage(display, picture.width(), picture.height());
  if (image == nullptr) {
    return {};
  }
  fill(*image, picture);
  XPutImage(display, pixmap.get(), DefaultGC(display, DefaultScreen(display)), image.get(), 0, 0, 0,
            0, static_cast<unsigned>(picture.width()), static_cast<unsigned>(picture.height()));
  return pixmap;
}

ziPixmapHandle bitPixmapOf(const ziBitRows& rows) {
  Display* display = theScreen().display;
  if (display == nullptr || rows.bits.empty()) {
    return {};
  }
  std::vector<char> data(rows.bits.begin(), rows.bits.end());
  return {display, XCreateBitmapFromData(display, DefaultRootWindow(display), data.data(),
                                         static_cast<unsigned>(rows.width),
                                         static_cast<unsigned>(rows.height))};
}

void reportMessages(const ziMessages& messages) {
  std::for_each(messages.begin(), messages.end(), drawMessage);
}

std::string unableToFind(const char* className, const char* kind, const zResId& resource) {
  return std::string(className) + "::" + className + " Unable to find " + kind + " with resId(" +
         std::to_string(static_cast<std::int32_t>(resource.id)) + ")";
}
