#pragma once

#include <cstdio>
#include <string_view>

#include "button_file/button_file_notes.h"
#include "button_file/button_set.h"

/// Reads the button file `file` from its present position to its end. There is no error of syntax:
/// what has no meaning is ignored, and odd lines are paired as they come. A failed read counts as
/// the end of the file; `ferror` tells. `observer`, when given, is told of what gets lost.
ButtonSet readButtonFile(std::FILE* file, const ButtonFileObserver& observer = {});

/// The same for a file's bytes.
ButtonSet readButtonFile(std::string_view bytes, const ButtonFileObserver& observer = {});
