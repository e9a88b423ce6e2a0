#pragma once

#include <string>
#include <string_view>

#include "support/descriptor.h"

/// Opens a file for reading; null when that fails, and for all but regular files: a pipe would keep
/// the program waiting.
UniqueFile openRegularFile(const std::string& path);

/// Makes `bytes` the content of the file `path`, which must be a regular one or not there yet; of
/// what it links to where it is a symbolic link. True when all of it is on the disk. After a
/// failure the old content is still there, but for a file that had to be written in place: one in a
/// folder that takes no further file, one with several names, one whose owner could not be kept.
bool replaceFile(const std::string& path, std::string_view bytes);
