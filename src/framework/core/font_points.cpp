#include "framework/core/font_points.h"

#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "framework/draw/font_dict.h"
#include "framework/draw/measure.h"
#include "framework/draw/screen.h"

#include <X11/Intrinsic.h>

namespace {

constexpr std::size_t kPixelField = 7;
constexpr std::size_t kPointField = 8;
// The deepest path of names that a resource is looked for with.
constexpr std::size_t kLongestPath = 100;

/// An entry of the database as its functions take it.
struct FontEntry {
  std::vector<XrmBinding> bindings;
  std::vector<XrmQuark> names;
  zFontSpec font;
};

std::string_view fieldOf(std::string_view name, std::size_t wanted) {
  for (std::size_t field = 0; field < wanted; ++field) {
    const std::size_t dash = name.find('-');
    name = dash == std::string_view::npos ? std::string_view() : name.substr(dash + 1);
  }
  return name.substr(0, name.find('-'));
}

// What a name asks for that gives a point size and leaves the pixel size open.
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
  return zFontSpec(fields->family, zPrPoint(0, tenths), fields->weight,
                   static_cast<zFontPitch>(fields->pitch), fields->italic != 0);
}

Bool collect(XrmDatabase* /*database*/, XrmBindingList bindings, XrmQuarkList names,
             XrmRepresentation* /*type*/, XrmValue* value, XPointer entries) {
  const std::string_view text(value->addr, value->size > 0 ? value->size - 1 : 0);
  if (const std::optional<zFontSpec> font = askedInPoints(text)) {
    std::size_t length = 0;
    while (names[length] != NULLQUARK) {
      ++length;
    }
    reinterpret_cast<std::vector<FontEntry>*>(entries)->push_back(
        {{bindings, bindings + length}, {names, names + length + 1}, *font});
  }
  return False;  // goes on
}

}  // namespace

void resolveFontPoints(Display* display) {
  std::vector<FontEntry> entries;
  XrmDatabase database = XtDatabase(display);
  std::array<XrmQuark, kLongestPath> anyPath{NULLQUARK};
  XrmEnumerateDatabase(database, anyPath.data(), anyPath.data(), XrmEnumAllLevels, collect,
                       reinterpret_cast<XPointer>(&entries));
  for (FontEntry& entry : entries) {
    const ziFontCacheEntry* font = ziDrawCache::instance().fonts()->realize(entry.font);
    XrmQPutStringResource(&database, entry.bindings.data(), entry.names.data(),
                          font->fullName.c_str());
  }
}
