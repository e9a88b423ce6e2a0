#pragma once

#include <cstddef>
#include <cstdio>
#include <ostream>
#include <string>

namespace btnlint {

/// Reads the button file `file` to its end and writes what is to be remarked to `output`, a line
/// each, in the order of the file's lines, beginning "name:line: ". Returns how many there were.
std::size_t lint(const std::string& name, std::FILE* file, std::ostream& output);

}  // namespace btnlint
