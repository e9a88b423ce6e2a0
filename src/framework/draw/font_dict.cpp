#include "framework/draw/font_dict.h"

#include <algorithm>

#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"

// The server is asked for its names once; every choice of a font is then made in memory, and an
// equal request costs no round trip. Entries of `used` never move and never go before the
// dictionary does, so fonts may keep pointers to them.

namespace {

constexpr const char* kAllFonts = "-*-*-*-*-*-*-*-*-*-*-*-*-*-*";
constexpr const char* kHpVendor = "Hewlett-Packard Company";

}  // namespace

ziFontCacheEntry::ziFontCacheEntry() = default;
ziFontCacheEntry::~ziFontCacheEntry() = default;

std::unique_ptr<ziXFontDict> ziXFontDict::ofServer(int capacity) {
  Display* display = theScreen().display;
  const ziPenaltyRules rules{std::string_view(ServerVendor(display)) == kHpVendor};
  auto dict = std::make_unique<ziXFontDict>(
      capacity, rules, theScreen().dotsPerInchY,
      [display](const std::string& name) { return ziXFont::load(display, name); });
  int count = 0;
  char** names = XListFonts(display, kAllFonts, kMaxNames, &count);
  dict->dictionary.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    dict->addName(names[i]);
  }
  XFreeFontNames(names);
  return dict;
}

ziXFontDict::ziXFontDict(int capacity, const ziPenaltyRules& penaltyRules, int dotsPerInchY,
                         Loader loader)
    : capacityValue(capacity),
      rules(penaltyRules),
      verticalDpi(dotsPerInchY),
      load(std::move(loader)) {}

ziXFontDict::~ziXFontDict() = default;

void ziXFontDict::addName(std::string_view name) {
  if (auto entry = parseXlfd(name)) {
    dictionary.push_back(std::move(*entry));
  }
}

ziFontCacheEntry* ziXFontDict::realize(const zFontSpec& spec) {
  if (ziFontCacheEntry* entry = findUsed(spec)) {
    ++entry->refCount;
    return entry;
  }
  const ziFontDictEntry* match = bestMatch(spec);
  if (match == nullptr) {
    return nullptr;
  }
  auto entry = std::make_unique<ziFontCacheEntry>();
  const bool isScaled = spec.fullName().isEmpty() && match->isScalable();
  entry->fullName = isScaled
                        ? scaledFontName(match->fullName.view(), spec.log().height, verticalDpi)
                        : match->fullName.str();
  entry->asked = entry->spec = spec;
  if (spec.log().width == 0) {
    entry->spec.log().width = match->pointSize;
  }
  entry->xFont = load(entry->fullName.str());
  if (entry->xFont != nullptr) {
    entry->fontId = entry->xFont->id();
    entry->refCount = 1;
  }
  used.push_back(std::move(entry));
  return used.back().get();
}

void ziXFontDict::release(ziFontCacheEntry* /*entry*/) {
  // The count never falls, which is intended: the program uses few fonts, all of them stay loaded
  // until it ends, and asking for one again costs nothing. So there are no fonts out of use either,
  // and the capacity limits nothing.
}

const ziFontDictEntry* ziXFontDict::bestMatch(const zFontSpec& spec) const {
  const ziFontDictEntry* best = nullptr;
  std::int64_t lowest = kWorstPenalty;
  for (const ziFontDictEntry& entry : dictionary) {
    const std::int64_t penalty = fontPenalty(entry, spec, rules);
    if (penalty < lowest) {
      lowest = penalty;
      best = &entry;
    }
    if (penalty == 0) {
      break;
    }
  }
  return best;
}

ziFontCacheEntry* ziXFontDict::findUsed(const zFontSpec& spec) {
  // A request may also come back as a font reported it, with its width filled in.
  const auto found = std::find_if(used.begin(), used.end(), [&](const auto& entry) {
    return entry->asked == spec || entry->spec == spec;
  });
  return found == used.end() ? nullptr : found->get();
}
