#include "framework/draw/font.h"

#include "framework/draw/draw_cache.h"
#include "framework/draw/unit_arithmetic.h"
#include "framework/draw/x_font_xm.h"

zFont::zFont(int stockNumber)
    : zDrawObj(true), request(zFontSpec::stock(stockNumber)), number(stockNumber) {
  realize();
}

zFont::zFont(const zFontSpec& spec) : zDrawObj(false), request(spec) {
  request.log().faceName = mapFaceName(spec.log().faceName);
  realize();
}

zFont::~zFont() {
  ziDrawCache* cache = ziDrawCache::existing();
  if (cache != nullptr && cache->fonts() != nullptr && entry != nullptr) {
    cache->fonts()->release(entry);
  }
}

const ziXFont* zFont::xFont() const {
  return entry == nullptr ? nullptr : entry->xFont.get();
}

zDimension zFont::measure(const char* text, int length) const {
  const ziXFont* font = xFont();
  return font == nullptr ? fallbackTextSize(length)
                         : zDimension{font->textWidth(text, length), font->height()};
}

unsigned long zFont::lookUpPixel() const {
  return entry == nullptr ? 0 : entry->fontId;
}

void zFont::realize() {
  ziXFontDict* fonts = ziDrawCache::instance().fonts();
  entry = fonts == nullptr ? nullptr : fonts->realize(request);
  if (entry != nullptr) {
    request = entry->spec;
  }
}
