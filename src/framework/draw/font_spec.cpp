#include "framework/draw/font_spec.h"

#include <algorithm>
#include <array>

#include "framework/draw/measure.h"
#include "framework/draw/xlfd.h"

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

RWCString mapFaceName(const RWCString& faceName) {
  const auto* row = std::find_if(kFaceMap.begin(), kFaceMap.end(), [&](const FaceRow& candidate) {
    return equalNoCase(candidate.face, faceName.view());
  });
  return row == kFaceMap.end() ? faceName : RWCString(row->family);
}
