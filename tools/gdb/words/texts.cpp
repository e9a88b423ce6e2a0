#include "gdb/words/texts.h"

#include <algorithm>

#include "support/text.h"

namespace gdb {

namespace {

constexpr std::string_view kBlanks = " \t\r\n\f\v";
constexpr std::string_view kOmission = "...";

/// Of UTF-8, but not its first byte.
bool isInsideCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace

std::pair<std::string, std::string> splitWord(std::string_view line) {
  const std::size_t end = line.find_first_of(kBlanks);
  return {std::string(line.substr(0, end)),
          std::string(end == std::string_view::npos ? "" : line.substr(end + 1))};
}

bool hasControlCharacter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), isControlCharacter);
}

std::string shownItem(std::string_view text, std::size_t most) {
  std::string item = trimmed(text);
  std::replace_if(item.begin(), item.end(), isControlCharacter, '?');
  if (item.size() > most) {
    std::size_t from = (most - kOmission.size()) / 2;
    std::size_t to = item.size() - from;
    while (from > 0 && isInsideCharacter(item[from])) {
      --from;
    }
    while (to < item.size() && isInsideCharacter(item[to])) {
      ++to;
    }
    item.replace(from, to - from, kOmission);
  }
  return item;
}

std::string unquotedFile(const std::string& name) {
  const bool isQuoted = name.size() > 1 && name.front() == '"' && name.back() == '"';
  return isQuoted ? name.substr(1, name.size() - 2) : name;
}

std::string quotedFile(const std::string& name) {
  std::string quoted = "\"";
  for (const char character : name) {
    if (character == '"' || character == '\\') {
      quoted += '\\';
    }
    quoted += character;
  }
  return quoted + '"';
}

std::string filledCommand(std::string_view pattern, const std::string& value) {
  std::string command(pattern);
  const std::size_t gap = command.find('%');
  if (gap != std::string::npos) {
    command.replace(gap, 2, command[gap + 1] == 'f' ? quotedFile(value) : value);
  }
  return command;
}

}  // namespace gdb
