#pragma once

#include <deque>
#include <string>
#include <string_view>

#include "session/session.h"

/// The way of a typed line to the tester: it is cut at semicolons, its first piece goes out at once
/// and the rest when the tester has answered.

/// What an empty line asks the tester for: its list of commands.
inline constexpr char kEmptyLineCommand[] = "??";

/// Cuts `line` at each semicolon outside double quotes. Quotes and blanks stay as they are; empty
/// pieces count, except at the end of the line.
std::deque<std::string> splitCommandLine(std::string_view line);

/// `text`, which comes behind `before` in a command line, with its lines as pieces of that line: a
/// semicolon stands for each line end inside, behind a closing double quote where the line has left
/// one open. Otherwise as singleLine.
std::string joinCommandLines(std::string_view text, std::string_view before = {});

/// Cuts `line` (kEmptyLineCommand when it is empty) into commandQueue, which loses what it still
/// held, and sends the first piece. When a piece is too long for a frame nothing is done: the log
/// says why, and the result is false.
bool executeCommandLine(std::string_view line);

/// The tester has confirmed a command: sends all pieces that wait, if output came before.
void releaseCommandQueue();
