// Any text is taken as each kind of value that users write in X resource files: whatever comes out
// of it is within the limits.

#include <algorithm>
#include <string>

#include "framework/core/resource_values.h"
#include "framework/draw/font_dict.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  const std::string text(data.begin(), data.end());
  const int number = asNumber(text);
  require(asNumber(std::to_string(number)) == number);
  const zDimension size = asSize(text);
  require(size.width >= 0 && size.height >= 0);
  const auto colour = hexColour(text);
  require(!colour || (text.size() == 7 && text.find_first_of("+- ") == std::string::npos));

  const auto font = askedInPoints(text);
  require(!font || font->log().height >= 0);
  const auto list = resolvedPoints(text, [](const zFontSpec&) { return std::string(); });
  require(!list || list->size() < text.size());
  const auto fields = parseXlfd(text);
  require(!fields || fontPenalty(*fields, font.value_or(zFontSpec()), {}) >= 0);
  const std::string name = scaledFontName(text, number);
  require(std::count(name.begin(), name.end(), '-') <= 16 && name.size() <= text.size() + 13);
}
