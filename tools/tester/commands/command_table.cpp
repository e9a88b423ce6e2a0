#include "tester/commands/command_table.h"

#include <cstdint>

namespace tester {

ArgumentCount countArguments(std::string_view description) {
  ArgumentCount count;
  bool isOptional = false;
  for (const char character : description) {
    if (character == '[') {
      isOptional = true;
    }
    if (character != '<') {
      continue;
    }
    ++count.most;
    if (!isOptional) {
      ++count.least;
    }
  }
  if (description.find("...") != std::string_view::npos) {
    count.most = SIZE_MAX;
  }
  return count;
}

std::string usageText(const CommandRow& row) {
  std::string text(row.name);
  if (!row.arguments.empty()) {
    text.append(" ").append(row.arguments);
  }
  return text;
}

Lookup<const CommandRow*> CommandTable::find(std::string_view word) const {
  std::vector<std::string> names;
  for (const CommandRow& row : rows) {
    names.emplace_back(row.name);
    if (!row.alias.empty()) {
      names.emplace_back(row.alias);
    }
  }
  const auto name = findName(word, names, "command");
  if (!name) {
    return notFound<const CommandRow*>(name.problem + " \"?\?\" lists the commands.");
  }
  for (const CommandRow& row : rows) {
    if (row.name == *name.value || row.alias == *name.value) {
      return found(&row);
    }
  }
  return {};
}

bool CommandTable::keepsRun(const std::string& command) const {
  const auto row = find(command.substr(0, command.find_first_of(" \t")));
  return row && (*row.value)->keepsRun;
}

std::optional<CommandTable::LineCommand> CommandTable::findLineCommand(
    const std::string& command) const {
  const std::size_t blank = command.find_first_of(" \t");
  const auto row = find(command.substr(0, blank));
  if (!row || !(*row.value)->takesLine) {
    return std::nullopt;
  }
  std::string rest = blank == std::string::npos ? "" : trimmed(command.substr(blank));
  const bool isQuoted = rest.size() > 1 && rest.front() == rest.back() &&
                        (rest.front() == '"' || rest.front() == '\'');
  if (isQuoted) {
    rest = rest.substr(1, rest.size() - 2);
  }
  return LineCommand{*row.value, rest.empty() ? Words{} : Words{rest}};
}

}  // namespace tester
