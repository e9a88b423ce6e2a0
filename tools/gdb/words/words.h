#pragma once

#include <string>

#include "gdb/session/control.h"

namespace gdb {

/// Carries out a line that begins with one of nelgdb's own words, which go before GDB's commands;
/// false when it does not, so that the line is GDB's. A line that GDB must not get, because it
/// would take the console away or repeat the last command, is refused here.
///
/// The log shows the line already, so that nothing more need be printed. The target may run: a word
/// that needs it to stand interrupts it, the others leave the run alone.
bool takeWord(Control& control, const std::string& line);

/// What the user is offered to search the log for before more is known: signals.
tester_link::SearchLists usualSearchLists();
/// What he is offered by a GDB that answers: threads, signals, breakpoints. `then` gets them.
void collectSearchLists(Control& control,
                        const std::function<void(const tester_link::SearchLists&)>& then);

}  // namespace gdb
