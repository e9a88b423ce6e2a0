#pragma once

#include <cstdio>
#include <string>

#include "buttons/file/button_set.h"

/// The bytes of a button file that holds `set`. Texts that the reader will not take for what they
/// are go out as they stand, without a word.
std::string formatButtonSet(const ButtonSet& set);

/// Writes these bytes to `file`. Whether they get there is not looked at.
void writeButtonSet(const ButtonSet& set, std::FILE* file);
