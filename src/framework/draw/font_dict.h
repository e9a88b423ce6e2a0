#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/draw/font.h"
#include "framework/draw/x_handles.h"

/// The X logical font description, as far as the choice of a font needs it. All functions take
/// names of any content.

/// One font that the server lists.
struct ziFontDictEntry {
  RWCString foundry;  ///< "*" if the name has none
  RWCString family;
  int pitch = kPitchVariable;
  int averageWidth = 0;
  int pixelSize = 0;
  int pointSize = 0;
  int charSet = kCharSetOther;
  int weight = kFontNormal;
  int italic = 0;
  int resolutionX = 0;
  int resolutionY = 0;
  RWCString fullName;

  /// A font that the server draws in any size.
  bool isScalable() const { return pixelSize == 0 && pointSize == 0 && averageWidth == 0; }
};

/// What a font name says; nothing for the names that are skipped (Japanese and Korean sets).
/// Fields that are missing count as empty.
std::optional<ziFontDictEntry> parseXlfd(std::string_view name);

/// The weight that a word of a font name stands for.
int weightOfWord(std::string_view word);

/// The sides of the penalty that do not belong to the request.
struct ziPenaltyRules {
  bool isHpServer = false;  ///< on that server the 95-dpi fonts lose to the others
};

/// How badly `entry` fits `spec`, 0 for not at all; the search for a font takes the lowest.
std::int64_t fontPenalty(const ziFontDictEntry& entry, const zFontSpec& spec,
                         const ziPenaltyRules& rules);

/// A candidate must stay below this.
inline constexpr std::int64_t kWorstPenalty = 20000;

/// The name of a scalable font at `height` pixels, in any average width. Not by its point size:
/// that the server resolves by a resolution of its own.
std::string scaledFontName(std::string_view fullName, int height);

using ziFontDictEntryDlist = std::vector<ziFontDictEntry>;

/// A font that the program uses; it stays loaded as long as the dictionary lives.
struct ziFontCacheEntry {
  ziFontCacheEntry();
  ~ziFontCacheEntry();

  RWCString fullName;  ///< the name that was loaded
  zFontSpec asked;     ///< the request as it came
  zFontSpec spec;      ///< the same with the width filled in
  Font fontId = 0;
  std::unique_ptr<ziXFont> xFont;  ///< null when the server could not load it
  int refCount = 0;
};

/// All fonts of the server, and those in use. Made once, with the first frame, and never
/// refreshed; goes when the program ends.
class ziXFontDict {
 public:
  /// Loads a font by its X name; null when that fails.
  using Loader = std::function<std::unique_ptr<ziXFont>(const std::string& name)>;

  /// How the first frame makes it.
  static constexpr int kDefaultCapacity = 25;
  static constexpr int kMaxNames = 2000;

  /// Lists the fonts of theScreen().
  static std::unique_ptr<ziXFontDict> ofServer(int capacity);
  ziXFontDict(int capacity, const ziPenaltyRules& rules, Loader loader);
  ziXFontDict(const ziXFontDict&) = delete;
  ziXFontDict& operator=(const ziXFontDict&) = delete;
  ~ziXFontDict();

  /// Adds a listed name, unless it is one of those that are skipped.
  void addName(std::string_view name);
  const ziFontDictEntryDlist& entries() const { return dictionary; }

  /// The font nearest to `spec` that the server loads, at last the default one. An equal request
  /// gives the same entry. The entry belongs to the dictionary.
  ziFontCacheEntry* realize(const zFontSpec& spec);
  /// The owner of `entry` needs it no more. Changes nothing: see the source.
  void release(ziFontCacheEntry* entry);

  /// The entries of the dictionary that may serve, the best first.
  std::vector<const ziFontDictEntry*> candidates(const zFontSpec& spec) const;
  int capacity() const { return capacityValue; }
  std::size_t usedCount() const { return used.size(); }

 private:
  ziFontCacheEntry* findUsed(const zFontSpec& spec);
  void loadBest(ziFontCacheEntry& entry) const;

  ziFontDictEntryDlist dictionary;
  std::vector<std::unique_ptr<ziFontCacheEntry>> used;
  int capacityValue;
  ziPenaltyRules rules;
  Loader load;
};
