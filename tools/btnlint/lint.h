#pragma once

#include <cstddef>
#include <cstdio>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace btnlint {

/// What is looked at of a file, and how many of its lines are remarked on, so that a file of any
/// size takes a bounded amount of memory.
inline constexpr std::size_t kMaxFileBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMaxLineRemarks = 1000;

/// Reads the button file `file` and writes what is to be remarked to `output`, a line each: what
/// concerns the whole file, beginning "name: ", then at most one remark on each line of it, in
/// their order, beginning "name:line: ". Returns how many there were.
std::size_t lint(const std::string& name, std::FILE* file, std::ostream& output);

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
