#include "framework/draw/cursor.h"

#include <string>

#include "framework/draw/draw_message.h"
#include "framework/draw/image/ico.h"
#include "framework/draw/res_id.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_pictures.h"

#include <X11/Xlib.h>

namespace {

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

}  // namespace

zCursor::zCursor(Display* display, unsigned fontShape)
    : cursor(std::make_shared<Shared>(display, XCreateFontCursor(display, fontShape))) {}

zCursor::zCursor(const zResId& resource) {
  const ziResource found(resource, kResourceCursor);
  const std::string notFound = "zCursor::zCursor Unable to find cursor with resId(" +
                               std::to_string(static_cast<std::int32_t>(resource.id)) + ")";
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

zCursor::Shared::~Shared() {
  if (id != 0) {
    XFreeCursor(display, id);
  }
}
