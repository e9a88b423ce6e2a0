#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tester/commands/names.h"

namespace tester {

class Debugger;

using Words = std::vector<std::string>;

/// What a command's function says about its end.
enum class CommandEnd {
  kDone,  ///< carried out or refused: confirm it
  kOpen,  ///< goes on, as a run does; Debugger::finish() confirms it
};

using CommandFunction = CommandEnd (*)(Debugger&, const Words& arguments);

/// One command. `arguments` is what the user reads and what the count of arguments is checked
/// against: "<instance> [<variable>]"; "..." after the last one allows more of them.
struct CommandRow {
  std::string_view name;
  std::string_view alias;  ///< another name; empty for most
  std::string_view arguments;
  std::string_view summary;  ///< a few words for the list of commands
  std::string_view details;  ///< what "help" says besides, in lines without an end; may be empty
  CommandFunction function = nullptr;
  bool takesLine = false;  ///< the rest of the line is one argument, as the name of a file is
  bool keepsRun = false;   ///< carried out beside a run, which others end
};

/// Numbers of arguments that a row's description allows.
struct ArgumentCount {
  std::size_t least = 0;
  std::size_t most = 0;  ///< SIZE_MAX without a bound
};
ArgumentCount countArguments(std::string_view description);

/// "name <argument>"
std::string usageText(const CommandRow& row);

class CommandTable {
 public:
  explicit CommandTable(std::span<const CommandRow> tableRows) : rows(tableRows) {}

  std::span<const CommandRow> all() const { return rows; }

  /// The row that the word names or abbreviates, aliases included.
  Lookup<const CommandRow*> find(std::string_view word) const;

  /// Whether `command` may be carried out while a run goes on.
  bool keepsRun(const std::string& command) const;

  /// A command that takes the rest of its line, without blanks and one pair of quotes around it.
  struct LineCommand {
    const CommandRow* row = nullptr;
    Words arguments;  ///< none or one
  };
  /// Nothing when `command` is none of these.
  std::optional<LineCommand> findLineCommand(const std::string& command) const;

 private:
  std::span<const CommandRow> rows;
};

/// All commands of the tester.
const CommandTable& testerCommands();

}  // namespace tester
