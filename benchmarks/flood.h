#pragma once

#include <chrono>
#include <string>

/// Line number `index` of a flood, 60 bytes with its line feed. No two are alike, so that a picture
/// changes with every line that is shown.
inline std::string floodLine(int index) {
  constexpr std::size_t kTextBytes = 59;
  std::string line = std::to_string(index) + " signal Acknowledge from Process:1 to Env:1, ";
  line.resize(kTextBytes, 'x');
  return line + "\n";
}

/// How long a flood may take to be shown.
inline constexpr std::chrono::seconds kFloodPatience{300};
