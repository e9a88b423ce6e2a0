#pragma once

#include <string>

#include "gdb/session/control.h"

namespace gdb {

/// Carries out a line that begins with one of nelgdb's own words, which go before GDB's commands;
/// false when it does not, so that the line is GDB's. A line that GDB must not get, because it
/// would take the console away, is refused here.
bool takeWord(Control& control, const std::string& line);

/// What the user is offered when he wants to search the log: threads, signals, breakpoints. `then`
/// gets them.
void collectSearchLists(Control& control,
                        std::function<void(const tester_link::SearchLists&)> then);

}  // namespace gdb
