#pragma once

#include <string>

namespace ui {

/// Fails the running test with `awaited` and ends the process: the loop that hangs cannot be left.
[[noreturn]] void endHangingTest(const std::string& awaited);

}  // namespace ui
