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
      capacity, rules, [display](const std::string& name) { return ziXFont::load(display, name); });
  int count = 0;
  char** names = XListFonts(display, kAllFonts, kMaxNames, &count);
  dict->dictionary.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    dict->addName(names[i]);
  }
  XFreeFontNames(names);
  return dict;
}

ziXFontDict::ziXFontDict(int capacity, const ziPenaltyRules& penaltyRules, Loader loader)
    : capacityValue(capacity), rules(penaltyRules), load(std::move(loader)) {}

ziXFontDict::~ziXFontDict() = default;

void ziXFontDict::addName(std::string_view name) {
  auto entry = parseXlfd(name);
  if (!entry) {
    return;
  }
  // Servers list the fonts of a family together: copies share their text.
  if (!dictionary.empty()) {
    const ziFontDictEntry& before = dictionary.back();
    entry->foundry = entry->foundry == before.foundry ? before.foundry : entry->foundry;
    entry->family = entry->family == before.family ? before.family : entry->family;
  }
  dictionary.push_back(std::move(*entry));
}

ziFontCacheEntry* ziXFontDict::realize(const zFontSpec& spec) {
  if (ziFontCacheEntry* entry = findUsed(spec)) {
    ++entry->refCount;
    return entry;
  }
  auto entry = std::make_unique<ziFontCacheEntry>();
  entry->asked = entry->spec = spec;
  loadBest(*entry);
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

// A server may list fonts that it then refuses; text is to be seen all the same.
void ziXFontDict::loadBest(ziFontCacheEntry& entry) const {
  const zFontSpec& asked = entry.asked;
  for (const ziFontDictEntry* candidate : candidates(asked)) {
    const bool isScaled = asked.fullName().isEmpty() && candidate->isScalable();
    const std::string name = isScaled
                                 ? scaledFontName(candidate->fullName.view(), asked.log().height)
                                 : candidate->fullName.str();
    if (asked.log().width == 0) {
      entry.spec.log().width = candidate->pointSize;
    }
    if ((entry.xFont = load(name)) != nullptr) {
      entry.fullName = name;
      return;
    }
  }
  for (const std::string& name : theScreen().lastFontNames()) {
    if ((entry.xFont = load(name)) != nullptr) {
      entry.fullName = name;
      return;
    }
  }
}

std::vector<const ziFontDictEntry*> ziXFontDict::candidates(const zFontSpec& spec) const {
  std::vector<std::pair<std::int64_t, const ziFontDictEntry*>> scored;
  for (const ziFontDictEntry& entry : dictionary) {
    const std::int64_t penalty = fontPenalty(entry, spec, rules);
    if (penalty < kWorstPenalty) {
      scored.emplace_back(penalty, &entry);
    }
  }
  // Of equals the earlier one comes first.
  std::sort(scored.begin(), scored.end());
  std::vector<const ziFontDictEntry*> sorted;
  sorted.reserve(scored.size());
  for (const auto& [penalty, entry] : scored) {
    sorted.push_back(entry);
  }
  return sorted;
}

ziFontCacheEntry* ziXFontDict::findUsed(const zFontSpec& spec) {
  // A request may also come back as a font reported it, with its width filled in.
  const auto found = std::find_if(used.begin(), used.end(), [&](const auto& entry) {
    return entry->asked == spec || entry->spec == spec;
  });
  return found == used.end() ? nullptr : found->get();
}
