#include "framework/core/debug_out.h"

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kLevelUnread = -1;

int level = kLevelUnread;

std::string formatted(const char* format, std::va_list arguments) {
  std::va_list again;
  va_copy(again, arguments);
  const int length = std::vsnprintf(nullptr, 0, format, again);
  va_end(again);
  if (length <= 0) {
    return {};
  }
  std::vector<char> buffer(static_cast<std::size_t>(length) + 1);
  std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
  return {buffer.data(), static_cast<std::size_t>(length)};
}

// The finished text serves as a format once more, which is intended: a doubled percent sign in it
// comes out as one. Any other directive has no argument to take and is printed as it stands.
std::string formattedAgain(const std::string& text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    result += text[i];
    if (text[i] == '%' && i + 1 < text.size() && text[i + 1] == '%') {
      ++i;
    }
  }
  return result;
}

}  // namespace

void zDebugOut(const char* format, ...) {
  if (level <= 0) {
    return;
  }
  std::va_list arguments;
  va_start(arguments, format);
  const std::string text = formatted(format, arguments);
  va_end(arguments);
  std::fputs((formattedAgain(text) + "\r\n").c_str(), stdout);
}

int debugLevel() {
  return level;
}

void setDebugLevel(int newLevel) {
  level = newLevel;
}
