#include "tester/commands/columns.h"
#include "tester/commands/command_functions.h"
#include "tester/commands/debugger.h"

namespace tester {

namespace {

constexpr char kIndent[] = "  ";

std::string indented(std::string_view text) {
  std::string lines = kIndent;
  for (const char character : text) {
    lines += character;
    if (character == '\n') {
      lines += kIndent;
    }
  }
  return lines;
}

}  // namespace

CommandEnd listCommands(Debugger& debugger, const Words& /*arguments*/) {
  Columns columns;
  for (const CommandRow& row : debugger.commands().all()) {
    columns.add({usageText(row), std::string(row.summary)});
  }
  return debugger.printList(
      columns.text(kIndent) +
      "Names may be abbreviated as far as they stay unique: \"l-p\" is list-process.\n");
}

CommandEnd helpOnCommand(Debugger& debugger, const Words& arguments) {
  if (arguments.empty()) {
    return listCommands(debugger, arguments);
  }
  const auto row = debugger.commands().find(arguments[0]);
  if (!row) {
    return debugger.answer(row.problem);
  }
  debugger.print(usageText(**row.value));
  debugger.print(indented((*row.value)->summary) + '.');
  if (!(*row.value)->details.empty()) {
    debugger.print(indented((*row.value)->details));
  }
  if (!(*row.value)->alias.empty()) {
    debugger.print(kIndent + ("Also called " + std::string((*row.value)->alias)) + '.');
  }
  return CommandEnd::kDone;
}

}  // namespace tester
