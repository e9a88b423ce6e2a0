#pragma once

#include <string>
#include <string_view>
#include <utility>

/// Small operations on command lines and on what is shown of a program.
namespace gdb {

/// The first word of a trimmed line, and what follows the one blank behind it.
std::pair<std::string, std::string> splitWord(std::string_view line);

bool hasControlCharacter(std::string_view text);

/// Bytes that the field of a list question takes, or a few less.
inline constexpr std::size_t kMaxItem = 240;

/// `text` as one line that the user interface hands back as it came, with "?" for control
/// characters and "..." in the middle of one that is longer than `most` bytes.
std::string shownItem(std::string_view text, std::size_t most = kMaxItem);

/// The name of a file as the user gave it, without quotes around it.
std::string unquotedFile(const std::string& name);
/// The name of a file in the quotes that GDB's commands take where blanks part their arguments.
std::string quotedFile(const std::string& name);

/// The command with "%1" as `value` stands, or "%f" as `value` is quoted.
std::string filledCommand(std::string_view pattern, const std::string& value);

}  // namespace gdb
