#pragma once

#include <string>

#include "launcher/launch.h"

namespace launcher {

/// What is wrong with the files and the folder that the session is to begin with; empty for
/// nothing.
std::string fileFault(const Options& options);

}  // namespace launcher
