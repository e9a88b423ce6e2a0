#pragma once

#include <filesystem>
#include <string>

#include "gdb/options/options.h"

namespace gdb {

/// The folder with the button set that the window is to load for a program: the one that was named,
/// else the program's; empty when none has a set.
std::string buttonFolder(const Options& options, const std::string& program);

/// The folder with the set for all programs: a copy of the shipped one in the user's own files,
/// since the window works where its buttons are, and saves them there.
std::string usualButtonFolder();

/// Keeps in `own` a copy of the set in `shipped`, as it is now unless the user has changed the
/// copy. The folder to use: `shipped` where there can be no copy, none where there is no set.
std::filesystem::path copiedButtons(const std::filesystem::path& shipped,
                                    const std::filesystem::path& own);

}  // namespace gdb
