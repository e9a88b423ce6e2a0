#pragma once

#include <string>
#include <vector>

#include "gdb/options/options.h"

namespace gdb {

/// What GDB is told before anything else, by queries: how it is to behave on a console that is a
/// log, and where the program's terminal is.
std::vector<std::string> settingsFor(const std::string& programTerminal);

/// The query by which GDB shows with each frame, which one command needs otherwise than another:
/// every stop names its place, and lists of frames have a line for each.
std::string frameSettingFor(const std::string& command);

/// The console commands that begin a session, which the log shows.
std::vector<std::string> firstCommands(const Options& options);

/// The name of the GDB that fits: the one that was named, or the one for `program`'s machine.
std::string debuggerFor(const Options& options, const std::string& program);

/// The folder with the button set that the window is to load for a program: the one that was named,
/// else the program's; empty when none has a set.
std::string buttonFolder(const Options& options, const std::string& program);

}  // namespace gdb
