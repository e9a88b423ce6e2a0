#include "textarea/command_lines.h"

#include <algorithm>

#include "support/line_text.h"

namespace {

bool hasOpenQuote(std::string_view text) {
  return std::count(text.begin(), text.end(), '"') % 2 != 0;
}

}  // namespace

std::string joinCommandLines(std::string_view text, std::string_view before) {
  bool startsInQuotes = hasOpenQuote(before);
  std::size_t lineStart = 0;
  return joinLines(text, [&](std::string& joined) {
    const std::string_view line = std::string_view(joined).substr(lineStart);
    if (hasOpenQuote(line) != startsInQuotes) {
      joined += '"';
    }
    joined += ';';
    lineStart = joined.size();
    startsInQuotes = false;
  });
}
