#pragma once

#include <string>
#include <string_view>

/// What a file form shows at first.
struct ziFilePreset {
  std::string directory;  ///< empty for the working directory
  std::string name;       ///< goes into the selection field behind the directory
  std::string pattern;

  friend bool operator==(const ziFilePreset&, const ziFilePreset&) = default;
};

/// Takes a preset path apart. The pattern is that of `filter` (see zFileForm); without a filter it
/// is the part of the preset that has wild cards, and otherwise "*".
ziFilePreset makeFilePreset(std::string_view preset, const char* const* filter);
