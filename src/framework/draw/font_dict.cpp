#include "framework/draw/font_dict.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>

#include "framework/draw/screen.h"
#include "framework/draw/x_font_xm.h"
#include "support/text.h"

// A font name is "-foundry-family-weight-slant-setwidth-style-pixels-points-resx-resy-spacing-
// width-registry-encoding". Names come from the server and are taken apart without trust: fields
// may be missing, empty or of any length.
// The server is asked for its names once; every choice of a font is then made in memory, and an
// equal request costs no round trip. Entries of `used` never move and never go before the
// dictionary does, so fonts may keep pointers to them.

namespace {

constexpr char kDash = '-';

/// Walks over the fields of a font name.
class FieldReader {
 public:
  explicit FieldReader(std::string_view name)
      : rest(name.substr(!name.empty() && name.front() == kDash ? 1 : 0)) {}

  /// The next field; empty behind the last one.
  std::string_view next() {
    const std::size_t end = std::min(rest.find(kDash), rest.size());
    const std::string_view field = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return field;
  }
  int nextNumber() {
    const std::string_view field = next();
    int value = 0;
    // What is no number, or too large a one, counts as 0.
    const auto result = std::from_chars(field.data(), field.data() + field.size(), value);
    return result.ec == std::errc() ? value : 0;
  }
  void skip(int fields) {
    while (fields-- > 0) {
      next();
    }
  }

 private:
  std::string_view rest;
};

bool startsWithOneOf(std::string_view field, std::string_view lowerLetters) {
  return !field.empty() && lowerLetters.find(lowerCase(field.front())) != std::string_view::npos;
}

struct WeightWord {
  std::string_view word;
  int weight;
};

constexpr std::array<WeightWord, 14> kWeightWords{{
    {"ultralight", 100},
    {"extralight", 200},
    {"light", 300},
    {"semilight", 300},
    {"medium", kFontRegular},
    {"regular", kFontRegular},
    {"normal", kFontNormal},
    {"semibold", 600},
    {"demibold", 600},
    {"bold", kFontBold},
    {"extrabold", 800},
    {"heavy", 800},
    {"ultrabold", 900},
    {"black", 900},
}};

enum Penalty : int {
  kPenaltyCharSet = 1000,
  kPenaltyFoundry = 900,
  kPenaltyFamily = 800,
  kPenaltyPitch = 700,
  kPenaltyItalic = 200,
  kPenaltyWeight = 100,
  kPenaltyHpResolution = 7,
  kPenaltyScalable = 5,
  kPenaltyOtherName = 5,
};
constexpr int kWeightStep = 10;
constexpr int kTooLargeFactor = 3;
constexpr int kHpResolution = 95;

std::int64_t heightPenalty(const ziFontDictEntry& entry, int wanted) {
  if (entry.pixelSize == wanted) {
    return 0;
  }
  if (entry.isScalable()) {
    return kPenaltyScalable;
  }
  const std::int64_t excess = std::int64_t{entry.pixelSize} - wanted;
  return excess > 0 ? kTooLargeFactor * excess : -excess;
}

// Dashes in front of the fields that a scaled name replaces, and those of a whole name.
constexpr int kDashesBeforePixels = 7;
constexpr int kDashesBeforePoints = 8;
constexpr int kDashesBeforeWidth = 12;
constexpr int kMaxDashes = 15;

constexpr const char* kAllFonts = "-*-*-*-*-*-*-*-*-*-*-*-*-*-*";
constexpr const char* kHpVendor = "Hewlett-Packard Company";

}  // namespace

int weightOfWord(std::string_view word) {
  const auto* found = std::find_if(kWeightWords.begin(), kWeightWords.end(), [&](const auto& row) {
    return equalIgnoringCase(row.word, word);
  });
  return found == kWeightWords.end() ? int{kFontNormal} : found->weight;
}

std::optional<ziFontDictEntry> parseXlfd(std::string_view name) {
  constexpr auto npos = std::string_view::npos;
  if (name.find("-jisx") != npos || name.find("-ksc") != npos) {
    return std::nullopt;
  }
  FieldReader fields(name);
  ziFontDictEntry entry;
  const std::string_view foundry = fields.next();
  entry.foundry = foundry.empty() ? RWCString(kAnyFoundry) : RWCString(foundry);
  entry.family = fields.next();
  entry.weight = weightOfWord(fields.next());
  entry.italic = startsWithOneOf(fields.next(), "io") ? 1 : 0;
  fields.skip(2);
  entry.pixelSize = fields.nextNumber();
  entry.pointSize = fields.nextNumber();
  entry.resolutionX = fields.nextNumber();
  entry.resolutionY = fields.nextNumber();
  entry.pitch = startsWithOneOf(fields.next(), "mc") ? kPitchFixed : kPitchVariable;
  entry.averageWidth = fields.nextNumber();
  const bool isIso = equalIgnoringCase(fields.next(), "iso8859");
  const bool isFirst = fields.next() == "1";
  entry.charSet = isIso && isFirst ? kCharSetLatin1 : kCharSetOther;
  entry.fullName = name;
  return entry;
}

std::int64_t fontPenalty(const ziFontDictEntry& entry, const zFontSpec& spec,
                         const ziPenaltyRules& rules) {
  const ziLogFont& wanted = spec.log();
  std::int64_t penalty = 0;
  if (entry.charSet != wanted.charSet) {
    penalty += kPenaltyCharSet;
  }
  if (wanted.foundry.view() != kAnyFoundry && !(wanted.foundry == entry.foundry)) {
    penalty += kPenaltyFoundry;
  }
  if (!equalIgnoringCase(entry.family.view(), wanted.faceName.view())) {
    penalty += kPenaltyFamily;
  }
  if (entry.pitch != wanted.pitch()) {
    penalty += kPenaltyPitch;
  }
  if (entry.weight != wanted.weight) {
    penalty += kPenaltyWeight + std::abs(std::int64_t{entry.weight} - wanted.weight) / kWeightStep;
  }
  if ((entry.italic != 0) != (wanted.italic != 0)) {
    penalty += kPenaltyItalic;
  }
  penalty += heightPenalty(entry, wanted.height);
  // On these servers the 95-dpi fonts lose to the others of the same size; intended.
  if (rules.isHpServer && entry.resolutionX == kHpResolution &&
      entry.resolutionY == kHpResolution) {
    penalty += kPenaltyHpResolution;
  }
  if (penalty == 0 && !spec.fullName().isEmpty() && !(spec.fullName() == entry.fullName)) {
    penalty += kPenaltyOtherName;
  }
  return penalty;
}

std::string scaledFontName(std::string_view fullName, int height) {
  std::string name;
  int dashes = 0;
  bool replaced = false;
  for (const char c : fullName) {
    if (c == kDash) {
      if (++dashes > kMaxDashes) {
        break;
      }
      name += c;
      replaced = true;
      if (dashes == kDashesBeforePixels) {
        name += std::to_string(height);
      } else if (dashes == kDashesBeforePoints || dashes == kDashesBeforeWidth) {
        name += '*';
      } else {
        replaced = false;
      }
    } else if (!replaced) {
      name += c;
    }
  }
  return name;
}

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
