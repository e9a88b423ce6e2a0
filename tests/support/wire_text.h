#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "link/wire.h"

/// Payloads and frames as they stand on the wire, right or wrong.

inline std::string wireWord(std::int32_t value) {
  return {reinterpret_cast<const char*>(&value), sizeof value};
}

/// A counted text.
inline std::string wireString(std::string_view text) {
  return wireWord(static_cast<std::int32_t>(text.size())).append(text);
}

/// A frame with its NUL.
inline std::string wireText(const FrameHeader& header, std::string_view payload = {}) {
  std::string binary(reinterpret_cast<const char*>(&header), sizeof header);
  binary += payload;
  std::string text(2 * binary.size() + 1, '\0');
  NibbleEncode(binary.data(), text.data(), static_cast<int>(binary.size()));
  return text;
}
