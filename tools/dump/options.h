#pragma once

#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace dump {

/// What of a file is wanted, and how it is written.
struct Options {
  std::string file = "-";       ///< "-" for standard input
  std::set<int> tags;           ///< message numbers; empty for all
  std::set<std::string> tools;  ///< names of tools; empty for all
  std::chrono::milliseconds from{0};
  std::chrono::milliseconds to = std::chrono::milliseconds::max();
  bool showDates = false;
  bool showFull = false;
};

enum ExitStatus : int { kExitGood = 0, kExitFailure = 1, kExitUsage = 2 };

/// What the command line asks for: options, or a text to print before an exit with `status`. The
/// text goes to standard output when the status is kExitGood, otherwise to standard error.
struct CommandLine {
  std::optional<Options> options;
  int status = kExitGood;
  std::string text;
};

CommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace dump
