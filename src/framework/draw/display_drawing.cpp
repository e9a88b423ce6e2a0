#include "framework/draw/display.h"

#include "framework/draw/display_xm.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

#include <X11/Xlib.h>

// Areas are filled with the brush, lines drawn with the pen; a hollow brush fills and a null pen
// draws nothing. Texts are drawn from their top left corner, in one line.

int zDisplay::polyline(const std::vector<zPoint>& points) {
  if (!canDraw()) {
    return kNotReady;
  }
  if (!pen()->isNull() && !points.empty()) {
    auto xPoints = toXPoints(points, origin);
    XDrawLines(xDisplay, xWindow, penGC.get(), xPoints.data(), static_cast<int>(xPoints.size()),
               CoordModeOrigin);
  }
  return kDrawn;
}

int zDisplay::fillRect(const zRect& rect, zBrush* withBrush) {
  if (!canDraw()) {
    return kNotReady;
  }
  const ziBrushInForce inForce(*this, withBrush);
  if (!brush()->isHollow()) {
    const XRectangle box = toXRectangle(origin, rect);
    XFillRectangle(xDisplay, xWindow, brushGC.get(), box.x, box.y, box.width, box.height);
  }
  return kDrawn;
}

int zDisplay::setPixel(int x, int y, const zColor& colour) {
  if (!canDraw()) {
    return kNotReady;
  }
  XSetForeground(xDisplay, penGC.get(), pixelOf(colour));
  const auto at = toXPoints({{x, y}}, origin).front();
  XDrawPoint(xDisplay, xWindow, penGC.get(), at.x, at.y);
  XSetForeground(xDisplay, penGC.get(), pen()->pixel());
  return kDrawn;
}

int zDisplay::drawBitmap(Pixmap pixmap, const zRect& source, const zPoint& to) {
  if (!canDraw()) {
    return kNotReady;
  }
  if (pixmap != 0) {
    const XRectangle from = toXRectangle({}, source);
    const XRectangle dest = toXRectangle(origin, to.x, to.y, 0, 0);
    XCopyArea(xDisplay, pixmap, xWindow, textGC.get(), from.x, from.y, from.width, from.height,
              dest.x, dest.y);
  }
  return kDrawn;
}

int zDisplay::copyIcon(Pixmap pixmap, Pixmap mask, const zDimension& size, const zPoint& to) {
  if (!canDraw()) {
    return kNotReady;
  }
  if (mask == 0 || pixmap == 0) {
    return drawBitmap(pixmap, zRect({}, size), to);
  }
  // A context of its own: the mask takes the place of the clip region.
  XGCValues values{};
  values.graphics_exposures = False;
  const ziGcHandle gc(xDisplay, XCreateGC(xDisplay, xWindow, GCGraphicsExposures, &values));
  const XRectangle dest = toXRectangle(origin, to.x, to.y, size.width, size.height);
  XSetClipMask(xDisplay, gc.get(), mask);
  XSetClipOrigin(xDisplay, gc.get(), dest.x, dest.y);
  XCopyArea(xDisplay, pixmap, xWindow, gc.get(), 0, 0, dest.width, dest.height, dest.x, dest.y);
  return kDrawn;
}

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
    XSetForeground(xDisplay, textGC.get(), pixelOf(backColour));
    XFillRectangle(xDisplay, xWindow, textGC.get(), left, top,
                   toXExtent(font->textWidth(string, count)), toXExtent(font->height()));
    XSetForeground(xDisplay, textGC.get(), pixelOf(textColour));
  }
  XDrawString(xDisplay, xWindow, textGC.get(), left, top + font->ascent(), string, count);
  return kDrawn;
}

void zDisplay::textSize(zDimension& size, const char* string, int length) {
  const int count = textLength(string, length);
  size = hasContexts() && string != nullptr ? fontObject()->measure(string, count)
                                            : fallbackTextSize(count);
}
