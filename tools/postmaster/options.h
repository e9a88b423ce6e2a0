#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace postmaster {

/// A tool's command: the program and its arguments; never empty.
using ToolCommand = std::vector<std::string>;

/// How a recording is replayed.
struct ReplayOptions {
  std::string file;  ///< empty for no replay
  double speed = 1;  ///< 0 for as fast as possible
  std::chrono::milliseconds patience{0};
  bool closes = false;  ///< the window, at the end
};

struct Options {
  std::vector<ToolCommand> tools;
  // Files to write: "-" for standard output, empty for none. No two are the same.
  std::string traceFile;
  std::string recordFile;
  std::string transcriptFile;
  std::string historyFile;  ///< never standard output
  ReplayOptions replay;
  std::string charset;  ///< of the tools but the window; empty when they write the window's
  bool joinsTexts = false;
  bool keepsButtons = false;
  bool restartsTester = false;
  int testerPatienceSeconds = 60;  ///< with a silent tester, if it may be restarted; 0 has no end
};

enum ExitStatus : int { kExitOrderly = 0, kExitFailure = 1, kExitUsage = 2 };

/// What the command line asks for: options, or a text to print before an exit with `status`. The
/// text goes to standard output when the status is kExitOrderly, otherwise to standard error.
struct CommandLine {
  std::optional<Options> options;
  int status = kExitOrderly;
  std::string text;
};

/// What is wrong is said in the name of `program`: the one that the user has called.
CommandLine parseCommandLine(int argc, const char* const* argv, const char* program = "nelmpm");

/// The words of a command, or what is wrong with it.
struct SplitCommand {
  ToolCommand words;
  std::string fault;  ///< empty with words; such as "a \" is not closed"
};

/// Cuts a command at blanks. Single and double quotes keep blanks, a backslash keeps the character
/// behind it (not within single quotes).
SplitCommand splitCommand(std::string_view command);

}  // namespace postmaster
