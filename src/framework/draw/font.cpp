#include "framework/draw/font.h"

#include <algorithm>
#include <array>

#include "framework/draw/font_dict.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"
#include "support/text.h"

namespace {

struct FaceRow {
  const char* face;
  const char* family;
};

constexpr std::array<FaceRow, 12> kFaceMap{{
    {"Helv", "helvetica"},
    {"Arial", "helvetica"},
    {"Courier New", "courier"},
    {"Modern", "helvetica"},
    {"Roman", "Times"},
    {"small fonts", "fixed"},
    {"MS Serif", "Times"},
    {"MS Sans Serif", "helvetica"},
    {"Tms Rmn", "Times"},
    {"Times New Roman", "Times"},
    {"System", "helvetica"},
    {"FixedSys", "fixed"},
}};

constexpr int kStockSize = 110;  // tenths of a point
constexpr int kFirstFixedFont = 10;
constexpr int kFirstSystemFont = 12;
constexpr int kLastSystemFont = 14;

}  // namespace

zFontSpec::zFontSpec(const RWCString& faceName, const zDimension& size, int weight,
                     zFontPitch pitch, bool italic) {
  record.height = size.height;
  record.width = size.width;
  record.weight = weight;
  record.italic = italic ? 1 : 0;
  record.pitchAndFamily = pitch;
  record.faceName = faceName;
}

zFontSpec zFontSpec::stock(int stockNumber) {
  const bool isSystem = stockNumber >= kFirstSystemFont && stockNumber <= kLastSystemFont;
  const bool isMapped = stockNumber >= kFirstFixedFont && stockNumber <= kLastSystemFont;
  const RWCString face = isSystem ? "System" : "FixedSys";
  // Only the numbers 10 to 14 go through the face map. With any other the face stays "FixedSys",
  // which no server knows: intended, the nearest fixed font serves.
  return {isMapped ? mapFaceName(face) : face, zPrPoint(kStockSize, kStockSize), kFontBold,
          isSystem ? kPitchVariable : kPitchFixed};
}

RWCString mapFaceName(const RWCString& faceName) {
  const auto* row = std::find_if(kFaceMap.begin(), kFaceMap.end(), [&](const FaceRow& candidate) {
    return equalIgnoringCase(candidate.face, faceName.view());
  });
  return row == kFaceMap.end() ? faceName : RWCString(row->family);
}

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
