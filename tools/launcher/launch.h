#pragma once

#include <optional>
#include <string>
#include <vector>

namespace launcher {

/// What the user asked for. The three files that are not named stand in the state folder.
struct Options {
  std::string tester = "nelkv";            ///< command, as for nelmpm --tool
  bool usesDebugger = false;               ///< the tester is the one on GDB
  std::string program;                     ///< that it debugs; empty without one
  std::vector<std::string> debuggerWords;  ///< its other options, each a name and a value
  std::vector<std::string> windowWords;    ///< further arguments of nelkvui
  std::optional<std::string> transcript;
  std::optional<std::string> recording;
  std::optional<std::string> history;
  std::string trace;
  std::string charset = "UTF-8";
  std::string replay;  ///< a recording that is played instead of running a tester
  std::string speed;
  bool keepsNothing = false;  ///< of the files that are not named
};

enum ExitStatus : int { kExitFailure = 1, kExitUsage = 2 };

/// What the command line asks for: options, or a text to print before an exit with `status`; the
/// text goes to standard error unless the status is 0.
struct CommandLine {
  std::optional<Options> options;
  int status = 0;
  std::string text;
};
CommandLine parseCommandLine(int argc, const char* const* argv);

/// The files in the folder that is kept.
inline constexpr const char* kTranscript = "transcript.txt";
inline constexpr const char* kRecording = "recording.txt";
inline constexpr const char* kHistory = "history.txt";

/// The arguments of nelmpm, its name first. `stateFolder` is where the files stand that were not
/// named; without one they are not kept.
std::vector<std::string> postmasterWords(const Options& options, const std::string& stateFolder,
                                         const std::string& recording = kRecording);

/// The folder for files of this kind: "korvane" below XDG_STATE_HOME (`stateHome`), or below
/// ".local/state" in `home` when that is no absolute path. Empty without either.
std::string stateFolderOf(const char* stateHome, const char* home);

/// `words` as one command that nelmpm cuts into the same words again.
std::string quoteCommand(const std::vector<std::string>& words);

}  // namespace launcher
