#pragma once

#include <string>

/// The folder "korvane" below the one that a variable names (`named`, as of XDG_CONFIG_HOME), or
/// else below `usual`, as "/.config", in the user's home; empty where neither is an absolute path.
inline std::string userFolderOf(const char* named, const char* home, const std::string& usual) {
  if (named != nullptr && named[0] == '/') {
    return named + std::string("/korvane");
  }
  return home != nullptr && home[0] == '/' ? home + usual + "/korvane" : "";
}
