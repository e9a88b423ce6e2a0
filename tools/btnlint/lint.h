#pragma once

#include <cstddef>
#include <cstdio>
#include <ostream>
#include <string>

namespace btnlint {

/// What is looked at of a file, and how many of its lines are remarked on, so that a file of any
/// size takes a bounded amount of memory.
inline constexpr std::size_t kMaxFileBytes = std::size_t{1} << 20;
inline constexpr std::size_t kMaxLineRemarks = 1000;

/// Reads the button file `file` and writes what is to be remarked to `output`, a line each: what
/// concerns the whole file, beginning "name: ", then at most one remark on each line of it, in
/// their order, beginning "name:line: ". Returns how many there were.
std::size_t lint(const std::string& name, std::FILE* file, std::ostream& output);

}  // namespace btnlint
