#include "framework/draw/font_info.h"

#include "framework/draw/font_dict.h"
#include "framework/draw/x_font_xm.h"

zFontInfo::zFontInfo(const zFont& font) {
  if (const ziXFont* loaded = font.xFont()) {
    const XFontStruct& metrics = *loaded->get();
    ascent = metrics.ascent;
    descent = metrics.descent;
    maxWidth = metrics.max_bounds.width;
    isFixedPitch = metrics.min_bounds.width == metrics.max_bounds.width;
  }
}

zFontDescript::zFontDescript(const zFont& font)
    : zFontInfo(font), faceName(font.spec().log().faceName) {
  if (font.cacheEntry() != nullptr) {
    fullName = font.cacheEntry()->fullName;
  }
}
