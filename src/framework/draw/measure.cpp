#include "framework/draw/measure.h"

#include <optional>

#include "framework/draw/display.h"
#include "framework/draw/draw_cache.h"
#include "framework/draw/font.h"
#include "framework/draw/screen.h"
#include "framework/draw/unit_arithmetic.h"
#include "framework/draw/x_font_xm.h"

namespace {

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

zDialogUnit::zDialogUnit(int x, int y, zDisplay& display) : zLogMeasure(x, y) {
  zDimension reference;
  display.lock();
  display.textSize(reference, kDialogUnitText, kDialogUnitTextLength);
  display.unlock();
  convert(reference);
}

void zDialogUnit::convert(const zDimension& reference) {
  pixels = {dialogUnitsX(x(), reference.width), dialogUnitsY(y(), reference.height)};
}
