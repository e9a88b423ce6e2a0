#include "framework/core/x_settings.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "framework/core/resource_values.h"

#include <X11/Intrinsic.h>

namespace {

constexpr int kUnread = -1;
constexpr int kUseChildMdiByDefault = 1;
constexpr int kDebugLevelByDefault = 0;

}  // namespace

zXSettings g_XSettings;

std::optional<std::string> readXResource(Display* display, const char* name,
                                         const char* className) {
  char* type = nullptr;
  XrmValue value = {};
  if (!XrmGetResource(XtDatabase(display), name, className, &type, &value) ||
      value.addr == nullptr) {
    return std::nullopt;
  }
  return std::string(value.addr, strnlen(value.addr, value.size));
}

std::optional<int> readXSetting(Display* display, const std::string& application, const char* key) {
  const std::string path = application + "." + key;
  const std::optional<std::string> text = readXResource(display, path.c_str(), path.c_str());
  return text ? std::optional(asNumber(*text)) : std::nullopt;
}

void readXSettings(Display* display, const std::string& application) {
  if (g_XSettings.useChildMdi == kUnread) {
    g_XSettings.useChildMdi =
        readXSetting(display, application, "useChildMDI").value_or(kUseChildMdiByDefault);
  }
  if (debugLevel() == kUnread) {
    setDebugLevel(readXSetting(display, application, "debugOn").value_or(kDebugLevelByDefault));
  }
  g_XSettings.positionIsFrameWorkaround =
      readXSetting(display, application, "positionIsFrameWorkaround").value_or(0) != 0;
  g_XSettings.incFontInDialogBy =
      readXSetting(display, application, "incFontInDialogBy").value_or(0);
  const std::string startSize = application + ".startSize";
  g_XSettings.startSize =
      asSize(readXResource(display, startSize.c_str(), startSize.c_str()).value_or(""));
  g_XSettings.promptKeyDelay = readXSetting(display, application, "promptKeyDelay")
                                   .value_or(zXSettings::kPromptKeyDelayByDefault);
}

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
