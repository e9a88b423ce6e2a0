#pragma once

#include <string>
#include <string_view>

/// `text`, which comes behind `before` in a command line, with its lines as pieces of that line: a
/// semicolon stands for each line end inside, behind a closing double quote where the line has left
/// one open. Otherwise as singleLine.
std::string joinCommandLines(std::string_view text, std::string_view before = {});
