#pragma once

#include <string>

#include "button_file/button_set.h"

/// The bytes of a button file that holds `set`. Texts that the reader will not take for what they
/// are go out as they stand, without a word.
std::string formatButtonSet(const ButtonSet& set);
