#pragma once

#include <string>

#include "tests/support/source_line.h"

/// Reports `text` as a failure of the running test at `where` and ends the test by an exception
/// that GoogleTest knows as reported. For helpers whose caller cannot go on.
[[noreturn]] void failScript(const std::string& text, SourceLine where);
