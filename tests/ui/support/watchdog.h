#pragma once

#include <string>

namespace ui {

/// Fails a test that stays in an event loop for longer than any test takes. Its loops also wake
/// regularly, so that one that waits for nothing is noticed.
void watchForHangs();

/// Fails the running test with `awaited` and ends the process: the loop that hangs cannot be left.
[[noreturn]] void endHangingTest(const std::string& awaited);

}  // namespace ui
