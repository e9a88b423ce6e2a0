// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.

#include "framework/draw/extra/font_info.h"

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

zFontSpec zFontSpec::fromFullName(const RWCString& name) {
  zFontSpec spec;
  if (const auto entry = parseXlfd(name.view())) {
    spec.record.height = entry->pixelSize;
    spec.record.width = entry->averageWidth;
    spec.record.weight = entry->weight;
    spec.record.italic = static_cast<std::uint8_t>(entry->italic);
    spec.record.charSet = static_cast<std::uint8_t>(entry->charSet);
    spec.record.pitchAndFamily = static_cast<std::uint8_t>(entry->pitch);
    spec.record.faceName = entry->family;
    spec.record.foundry = entry->foundry;
  }
  spec.exactName = name;
  return spec;
}
