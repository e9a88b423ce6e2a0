#include "framework/draw/screen.h"

#include "framework/draw/font_dict.h"
#include "framework/draw/x_font_xm.h"

namespace {

// A bare pointer, so that fonts that outlive every static object may still ask whether it is there.
ziDrawCache* theCache = nullptr;

}  // namespace

ziScreen::ziScreen() = default;
ziScreen::~ziScreen() = default;

void ziScreen::readSize() {
  const int number = DefaultScreen(display);
  screenWidth = DisplayWidth(display, number);
  screenHeight = DisplayHeight(display, number);
  screenWidthMM = DisplayWidthMM(display, number);
  screenHeightMM = DisplayHeightMM(display, number);
  dotsPerInchX = dotsPerInch(screenWidth, screenWidthMM);
  dotsPerInchY = dotsPerInch(screenHeight, screenHeightMM);
}

void ziScreen::loadDefaultFont(const std::string& name) {
  defaultFontName = name;
  defaultFont.reset();
  for (const std::string& candidate : lastFontNames()) {
    if (defaultFont == nullptr) {
      defaultFont = ziXFont::load(display, candidate);
    }
  }
}

std::array<std::string, 3> ziScreen::lastFontNames() const {
  return {defaultFontName, kFallbackFontName, kLastResortFontName};
}

int dotsPerInch(int pixels, int millimetres) {
  constexpr double kMillimetresPerInch = 25.4;
  return millimetres > 0 ? static_cast<int>(pixels / (millimetres / kMillimetresPerInch)) : 0;
}

ziScreen& theScreen() {
  static ziScreen screen;
  return screen;
}

ziDrawCache::ziDrawCache() = default;
ziDrawCache::~ziDrawCache() = default;

ziDrawCache& ziDrawCache::instance() {
  create();
  return *theCache;
}

ziDrawCache* ziDrawCache::existing() {
  return theCache;
}

void ziDrawCache::create() {
  if (theCache == nullptr) {
    theCache = std::make_unique<ziDrawCache>().release();
  }
}

void ziDrawCache::destroy() {
  const std::unique_ptr<ziDrawCache> last(theCache);
  theCache = nullptr;
}

void ziDrawCache::makeFonts() {
  if (dictionary == nullptr) {
    dictionary = ziXFontDict::ofServer(ziXFontDict::kDefaultCapacity);
  }
}

void ziDrawCache::setFonts(std::unique_ptr<ziXFontDict> fonts) {
  dictionary = std::move(fonts);
}

unsigned long pixelOf(zColor colour) {
  return ziDrawCache::instance().colours().pixel(colour);
}
