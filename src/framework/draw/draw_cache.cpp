#include "framework/draw/draw_cache.h"

namespace {

// A bare pointer, so that fonts that outlive every static object may still ask whether it is there.
ziDrawCache* theCache = nullptr;

}  // namespace

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

void ziDrawCache::makeFonts(int capacity) {
  if (dictionary == nullptr) {
    dictionary = ziXFontDict::ofServer(capacity);
  }
}
