#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "framework/draw/font_spec.h"

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

/// Compares ASCII text without regard to case.
bool equalNoCase(std::string_view a, std::string_view b);
