#pragma once

#include <optional>
#include <string>
#include <vector>

namespace gdb {

/// What nelgdb is to debug, and how. File names are absolute, or as GDB is to find them.
struct Options {
  std::string program = {};
  std::vector<std::string> arguments = {};  ///< of the program
  std::string core = {};
  std::string pid = {};
  std::string remote = {};                     ///< "HOST:PORT" or what else GDB connects to
  std::string serial = {};                     ///< "DEVICE" or "DEVICE:BAUD"
  std::vector<std::string> commandFiles = {};  ///< carried out at the start
  std::string debugger = {};                   ///< a program; empty for the one that fits
  std::string buttons = {};                    ///< a folder with a button set, before all others
  bool readsInitFiles = false;                 ///< GDB's own
};

/// What the command line asks for: options, or a text to print before an exit with `status`; the
/// text goes to standard error unless the status is 0.
struct CommandLine {
  std::optional<Options> options;
  int status = 0;
  std::string text;
};

/// Reads the command line, and goes to the directory that it names: file names before that are
/// relative to where the user stands.
CommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace gdb
