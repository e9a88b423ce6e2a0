// Tool types by name, and the display name of a tool in the link's error texts.

#include <unistd.h>
#include <array>
#include <cstdio>

#include "link/message_numbers.h"
#include "link/wire.h"

const char* toolTypeName(int toolType) {
  switch (toolType) {
    case NELKV:
      return "NELKV";
    case NELKVUI:
      return "NELKVUI";
    case NELGATE:
      return "NELGATE";
    case NELMPM:
      return "NELMPM";
    case NELLINK:
      return "NELLINK";
    case EXTERNAL:
      return "EXTERNAL";
    default:
      return nullptr;
  }
}

bool mayConnectAs(int toolType) {
  return toolType != NELMPM && toolTypeName(toolType) != nullptr;
}

const char* FormatToolName(int toolType) {
  constexpr std::size_t kNameBytes = 80;
  static std::array<char, kNameBytes> name;
  static bool made = false;
  // Intended: the first known name stays for the process, whatever type is asked for later.
  if (!made) {
    const char* const known = toolTypeName(toolType);
    std::snprintf(name.data(), name.size(), "%s(PID=%d,TOOLID=%d)",
                  known != nullptr ? known : "-Unknown toolname-", static_cast<int>(getpid()),
                  toolType);
    made = known != nullptr;
  }
  return name.data();
}
