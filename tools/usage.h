#pragma once

#include <string>

/// What all tools say of a wrong command line: the first line of what is wrong, and where help is.
/// "nel-dump: --from is later than --to; try nel-dump --help", without the line's end.
inline std::string usageFault(const std::string& tool, const std::string& what) {
  return tool + ": " + what.substr(0, what.find('\n')) + "; try " + tool + " --help";
}
