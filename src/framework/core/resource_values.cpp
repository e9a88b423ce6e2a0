#include "framework/core/resource_values.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "framework/draw/font_dict.h"
#include "framework/draw/measure.h"

#include <X11/Xutil.h>

namespace {

constexpr std::size_t kPixelField = 7;
constexpr std::size_t kPointField = 8;
constexpr int kMostTenths = 720;

std::string_view fieldOf(std::string_view name, std::size_t wanted) {
  for (std::size_t field = 0; field < wanted; ++field) {
    const std::size_t dash = name.find('-');
    name = dash == std::string_view::npos ? std::string_view() : name.substr(dash + 1);
  }
  return name.substr(0, name.find('-'));
}

}  // namespace

int asNumber(const std::string& text) {
  using Limits = std::numeric_limits<int>;
  const long number = std::strtol(text.c_str(), nullptr, 10);
  if (number == 0 && (text == "True" || text == "true")) {
    return 1;
  }
  return static_cast<int>(std::clamp<long>(number, Limits::min(), Limits::max()));
}

zDimension asSize(const std::string& text) {
  int x = 0;
  int y = 0;
  unsigned width = 0;
  unsigned height = 0;
  constexpr int kSizeOnly = WidthValue | HeightValue;
  constexpr unsigned kMost = std::numeric_limits<int>::max();
  if (XParseGeometry(text.c_str(), &x, &y, &width, &height) != kSizeOnly || width > kMost ||
      height > kMost) {
    return {};
  }
  return {static_cast<int>(width), static_cast<int>(height)};
}

std::optional<zColor> hexColour(std::string_view text) {
  constexpr std::size_t kLength = 7;
  constexpr int kHex = 16;
  std::uint32_t rgb = 0;
  if (text.size() != kLength || text.front() != '#') {
    return std::nullopt;
  }
  const char* end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data() + 1, end, rgb, kHex);
  return error == std::errc() && stopped == end ? std::optional(zColor(rgb)) : std::nullopt;
}

std::optional<zFontSpec> askedInPoints(std::string_view name) {
  const std::string_view points = fieldOf(name, kPointField);
  int tenths = 0;
  const auto [end, error] = std::from_chars(points.data(), points.data() + points.size(), tenths);
  if (!name.starts_with('-') || fieldOf(name, kPixelField) != "*" || error != std::errc() ||
      end != points.data() + points.size() || tenths <= 0) {
    return std::nullopt;
  }
  const std::optional<ziFontDictEntry> fields = parseXlfd(name);
  if (!fields) {
    return std::nullopt;
  }
  return zFontSpec(fields->family, zPrPoint(0, std::min(tenths, kMostTenths)), fields->weight,
                   static_cast<zFontPitch>(fields->pitch), fields->italic != 0);
}

std::optional<std::string> resolvedPoints(
    std::string_view list, const std::function<std::string(const zFontSpec&)>& nameOf) {
  std::string resolved;
  bool isAny = false;
  while (!list.empty()) {
    const std::string_view entry = list.substr(0, std::min(list.find(','), list.size() - 1) + 1);
    list.remove_prefix(entry.size());
    // Behind a name: its tag, the next name, or the others of its set.
    const std::size_t start = std::min(entry.find_first_not_of(" \t\n"), entry.size());
    const std::size_t end = std::min(entry.find_first_of("=,;:"), entry.size());
    const bool isSet = end < entry.size() && (entry[end] == ';' || entry[end] == ':');
    const auto font =
        isSet || start > end ? std::nullopt : askedInPoints(entry.substr(start, end - start));
    resolved += entry.substr(0, start);
    resolved += font ? nameOf(*font) + std::string(entry.substr(end)) : entry.substr(start);
    isAny = isAny || font;
  }
  return isAny ? std::optional(resolved) : std::nullopt;
}

int dialogFontPoints(unsigned points, int added) {
  constexpr std::int64_t kFewest = 5;
  constexpr std::int64_t kMost = 24;
  return static_cast<int>(std::clamp(std::int64_t{points} + added, kFewest, kMost));
}
