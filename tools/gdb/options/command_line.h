#pragma once

#include <optional>
#include <string>

#include "gdb/options/options.h"

namespace gdb {

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
