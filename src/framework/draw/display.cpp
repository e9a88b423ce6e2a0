#include "framework/draw/display.h"

#include <algorithm>
#include <cstring>

#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

// Contexts, current pen, brush and font, and clipping. The contexts come late, with the first lock;
// what was set before is kept in the object and sent to them then.

namespace {

constexpr int kDefaultStockFont = 14;
// No pen has this width, so the first pen is always sent.
constexpr int kNoPenWidth = 333;

}  // namespace

int textLength(const char* string, int length) {
  if (string == nullptr) {
    return 0;
  }
  return length <= 0 || length == kWholeText ? static_cast<int>(std::strlen(string)) : length;
}

zDisplay::zDisplay() : ropMode(GXcopy), penWidthCache(kNoPenWidth) {}

zDisplay::~zDisplay() {
  while (zFont* font = fontObjects.pop()) {
    const std::unique_ptr<zFont> last(font);
  }
}

void zDisplay::lock() {
  if (lockCount++ == 0) {
    lockAttach();
    sendFont();
  }
}

void zDisplay::unlock() {
  if (lockCount > 0 && --lockCount == 0) {
    unlockDetach();
  }
}

void zDisplay::makeContexts(Display* display, XID drawable, unsigned long background) {
  if (hasContexts() || display == nullptr) {
    return;
  }
  xDisplay = display;
  XGCValues values{};
  values.function = ropMode;
  values.background = background;
  values.foreground = brush()->pixel();
  // Only where a window's own content is copied, for scrolling, may what was covered come later. A
  // picture that ends too early would ask for a paint each time that it is painted.
  values.graphics_exposures = False;
  constexpr unsigned long kColours = GCForeground | GCBackground;
  constexpr unsigned long kQuiet = kColours | GCGraphicsExposures;
  brushGC = ziGcHandle(display, XCreateGC(display, drawable, GCFunction | kQuiet, &values));
  values.foreground = pen()->pixel();
  penGC = ziGcHandle(display, XCreateGC(display, drawable, GCFunction | kColours, &values));
  values.foreground = pixelOf(textColour);
  textGC = ziGcHandle(display, XCreateGC(display, drawable, kQuiet, &values));
  currentGC = penGC.get();
  sendPen(WithDashes::kYes);
  sendBrush();
  if (const zRegion* region = clipRegion != nullptr ? clipRegion.get() : paintRegion.get()) {
    clipContexts(region);
  }
}

void zDisplay::pushPen(zPen* newPen) {
  penStack.push(newPen == nullptr ? &basePen : newPen);
  sendPen(WithDashes::kYes);
}

void zDisplay::popPen() {
  penStack.pop();
  // The dashes stay those of the pen that leaves, which is intended.
  sendPen(WithDashes::kNo);
}

void zDisplay::sendPen(WithDashes withDashes) {
  if (!hasContexts()) {
    return;
  }
  const zPen& now = *pen();
  if (now.width() != penWidthCache || now.style() != penStyleCache) {
    XSetLineAttributes(xDisplay, penGC.get(), static_cast<unsigned>(std::max(now.width(), 0)),
                       now.isDashed() ? LineOnOffDash : LineSolid, CapRound, JoinRound);
    penWidthCache = now.width();
    penStyleCache = now.style();
  }
  if (withDashes == WithDashes::kYes && now.isDashed()) {
    const ziDashList dashes = dashList(now.style(), now.width());
    XSetDashes(xDisplay, penGC.get(), 0, dashes.lengths, dashes.count);
  }
  XSetForeground(xDisplay, penGC.get(), now.pixel());
}

void zDisplay::setBrush(zBrush* newBrush) {
  brushStack.push(newBrush == nullptr ? &baseBrush : newBrush);
  sendBrush();
}

void zDisplay::popBrush() {
  brushStack.pop();
  sendBrush();
}

void zDisplay::sendBrush() {
  if (!hasContexts()) {
    return;
  }
  const zBrush& now = *brush();
  XSetForeground(xDisplay, brushGC.get(), now.pixel());
  setStippleFrom(now);
}

void zDisplay::setStippleFrom(const zBrush& source) {
  if (!hasContexts()) {
    return;
  }
  const Pixmap stipple = source.stipple();
  XSetFillStyle(xDisplay, brushGC.get(), stipple == 0 ? FillSolid : FillOpaqueStippled);
  if (stipple != 0) {
    XSetStipple(xDisplay, brushGC.get(), stipple);
    XSetTSOrigin(xDisplay, brushGC.get(), source.origin().width, source.origin().height);
  }
}

void zDisplay::setFont(const zRCFont& font) {
  baseFont = font;
  sendFont();
}

zFont* zDisplay::fontObject() {
  if (!fontObjects.isEmpty()) {
    return fontObjects.top();
  }
  if (baseFont.isEmpty()) {
    baseFont = zRCFont(kDefaultStockFont);
  }
  return baseFont.font();
}

void zDisplay::sendFont() {
  if (!hasContexts()) {
    return;
  }
  if (const ziXFont* font = fontObject()->xFont()) {
    XSetFont(xDisplay, textGC.get(), font->id());
  }
}

zColor zDisplay::setBackColour(const zColor& colour) {
  const zColor before = std::exchange(backColour, colour);
  if (hasContexts()) {
    XSetBackground(xDisplay, textGC.get(), pixelOf(backColour));
  }
  return before;
}

zColor zDisplay::setTextColour(const zColor& colour) {
  const zColor before = std::exchange(textColour, colour);
  if (hasContexts()) {
    XSetForeground(xDisplay, textGC.get(), pixelOf(textColour));
  }
  return before;
}

int zDisplay::setClipRegion(const zRegion* region) {
  if (region == nullptr) {
    clipRegion.reset();
    clipContexts(paintRegion.get());
    return 0;
  }
  clipRegion = std::make_unique<zRegion>(*region);
  if (paintRegion != nullptr) {
    clipRegion->intersect(*paintRegion);
  }
  clipContexts(clipRegion.get());
  return 0;
}

int zDisplay::intersectClip(const zRect& rect) {
  zRegion area(rect);
  if (clipRegion != nullptr) {
    area.intersect(*clipRegion);
  }
  return setClipRegion(&area);
}

void zDisplay::clipContexts(const zRegion* region) {
  for (const GC gc : {penGC.get(), brushGC.get(), textGC.get()}) {
    if (gc == nullptr) {
      continue;
    }
    if (region != nullptr) {
      XSetRegion(xDisplay, gc, region->get());
    } else {
      XSetClipMask(xDisplay, gc, None);
    }
  }
}

void zDisplay::forgetClip() {
  clipRegion.reset();
  paintRegion.reset();
  clipContexts(nullptr);
}

void zDisplay::invalidate(const zRect* /*rect*/, int /*erase*/) {}

void zDisplay::invalidateRegion(const zRegion* /*region*/, int /*erase*/) {}
