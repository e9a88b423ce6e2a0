#pragma once

#include <string>
#include <string_view>

namespace gdb {

/// Why GDB must not get that trimmed line, as a sentence; empty when it may. Such commands put
/// something else in the place of GDB's console: a prompt, a pager, a shell, an editor, a file.
std::string refusalOf(std::string_view line);

}  // namespace gdb
