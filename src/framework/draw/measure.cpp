#include "framework/draw/measure.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "framework/draw/display.h"
#include "framework/draw/font.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

// All arithmetic truncates as integer division does. It is done in 64 bits, so that no measure
// overflows on the way; results are pulled into the range of a coordinate.

namespace {

constexpr int kPointsPerInch = 72;
constexpr int kTenths = 10;
constexpr int kRoundTenths = 5;

constexpr int kUnitsPerCharX = 4;
constexpr int kUnitsPerCharY = 8;

int toCoordinate(std::int64_t value) {
  return static_cast<int>(std::clamp<std::int64_t>(value, std::numeric_limits<std::int32_t>::min(),
                                                   std::numeric_limits<std::int32_t>::max()));
}

zDimension defaultFontReference() {
  std::optional<zDimension>& kept = ziDrawCache::instance().dialogReference();
  if (!kept) {
    const ziXFont* font = theScreen().defaultFont.get();
    kept = font == nullptr ? fallbackTextSize(kDialogUnitTextLength)
                           : zDimension{font->textWidth(kDialogUnitText, kDialogUnitTextLength),
                                        font->height()};
  }
  return *kept;
}

}  // namespace

int tenthsOfPointToPixels(int tenths, int dotsPerInch) {
  return toCoordinate((std::int64_t{tenths} * dotsPerInch / kPointsPerInch + kRoundTenths) /
                      kTenths);
}

int dialogUnitsX(int units, int referenceWidth) {
  const std::int64_t product = std::int64_t{units} * referenceWidth;
  std::int64_t quarters = product / kDialogUnitTextLength;
  if (product % kDialogUnitTextLength > kDialogUnitTextLength / 2 - 1) {
    ++quarters;
  }
  ++quarters;
  const int roundUp = quarters % kUnitsPerCharX > kUnitsPerCharX / 2 - 1 ? 1 : 0;
  return toCoordinate(quarters / kUnitsPerCharX + roundUp);
}

int dialogUnitsY(int units, int referenceHeight) {
  const std::int64_t eighths = std::int64_t{units} * referenceHeight;
  const int roundUp = eighths % kUnitsPerCharY > kUnitsPerCharY / 2 - 1 ? 1 : 0;
  const int taller = units / 3 + units / 6;
  return toCoordinate(eighths / kUnitsPerCharY + roundUp + taller);
}

zDimension fallbackTextSize(int length) {
  return {toCoordinate(std::int64_t{kFallbackCharSize} * length), kFallbackCharSize};
}

zPrPoint::zPrPoint(int x, int y) : zLogMeasure(x, y) {
  pixels = {tenthsOfPointToPixels(x, theScreen().dotsPerInchX),
            tenthsOfPointToPixels(y, theScreen().dotsPerInchY)};
}

zDialogUnit::zDialogUnit(int x, int y) : zLogMeasure(x, y) {
  convert(defaultFontReference());
}

zDialogUnit::zDialogUnit(int x, int y, const zFont& font) : zLogMeasure(x, y) {
  convert(font.measure(kDialogUnitText, kDialogUnitTextLength));
  ziDrawCache::instance().dialogReference().reset();
}

void zDialogUnit::convert(const zDimension& reference) {
  pixels = {dialogUnitsX(x(), reference.width), dialogUnitsY(y(), reference.height)};
}
