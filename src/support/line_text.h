#pragma once

#include <functional>
#include <string>
#include <string_view>

/// Whether `c` is a code below the blank, or Delete.
bool isControlCharacter(char c);

/// Text of any number of lines in the form of one line: line ends at its end go, and control
/// characters other than the tab become blanks. At each line end inside, `join` is called with what
/// has been put together so far, to add what stands for it.
std::string joinLines(std::string_view text, const std::function<void(std::string&)>& join);

/// The form of one line in which a line end is a blank.
std::string singleLine(std::string_view text);
