#include "framework/draw/display.h"

#include "framework/draw/draw_cache.h"
#include "framework/draw/unit_arithmetic.h"
#include "framework/draw/x_coords.h"
#include "framework/draw/x_font_xm.h"

#include <X11/Xlib.h>

// Texts are drawn from their top left corner, in one line.

int zDisplay::text(int x, int y, const char* string, int length) {
  if (!canDraw()) {
    return kNotReady;
  }
  const ziXFont* font = fontObject()->xFont();
  if (font == nullptr || string == nullptr) {
    return kDrawn;
  }
  const int count = textLength(string, length);
  const int left = toXCoord(std::int64_t{x} + origin.x);
  const int top = toXCoord(std::int64_t{y} + origin.y);
  if (textMode == kTextOpaque) {
    zColorCache& colours = ziDrawCache::instance().colours();
    XSetForeground(xDisplay, textGC.get(), colours.pixel(backColour));
    XFillRectangle(xDisplay, xWindow, textGC.get(), left, top,
                   toXExtent(font->textWidth(string, count)), toXExtent(font->height()));
    XSetForeground(xDisplay, textGC.get(), colours.pixel(textColour));
  }
  XDrawString(xDisplay, xWindow, textGC.get(), left, top + font->ascent(), string, count);
  return kDrawn;
}

int zDisplay::centerText(const zRect& rect, const char* string, int length) {
  zDimension size;
  textSize(size, string, length);
  // A text that fits exactly is moved by one pixel, which is intended.
  const auto half = [](int room) { return room / 2 == 0 ? 1 : room / 2; };
  return text(rect.left + half(rect.width() - size.width),
              rect.top + half(rect.height() - size.height), string, length);
}

void zDisplay::textSize(zDimension& size, const char* string, int length) {
  const int count = textLength(string, length);
  size = hasContexts() && string != nullptr ? fontObject()->measure(string, count)
                                            : fallbackTextSize(count);
}
