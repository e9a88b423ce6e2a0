#pragma once

#include <optional>
#include <string>
#include <vector>

namespace btnlint {

enum ExitStatus : int { kExitClean = 0, kExitRemarks = 1, kExitTrouble = 2 };

/// What the command line asks for: files to check, or a text to print before an exit with `status`.
/// The text goes to standard output when the status is kExitClean, otherwise to standard error.
struct CommandLine {
  std::optional<std::vector<std::string>> files;
  int status = kExitClean;
  std::string text;
};

CommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace btnlint
