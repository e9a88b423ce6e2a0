#pragma once

#include <optional>
#include <string>

#include "tester/commands/breakpoints.h"
#include "tester/commands/command_table.h"
#include "tester/commands/dialogue.h"
#include "tester/commands/run.h"

namespace tester {

/// Carries out the user's commands on an engine. At most one command is open at a time; the next
/// one ends it first. Every command prints at least its own prompt line before it is confirmed:
/// the user interface releases the waiting pieces of a command line only after some text.
class Debugger {
 public:
  /// All three must outlive the debugger.
  Debugger(Engine& debuggedEngine, Dialogue& userDialogue, const CommandTable& commandTable);

  /// Prints what system this is and where help is found, and sets the title.
  void greet();

  /// Carries out one command as the user typed it. An empty one does nothing but end a run.
  void execute(const std::string& command);

  bool isRunning() const { return run.has_value(); }

  /// Goes on with the run for a short time. Only while one is going on.
  void runSlice();

  /// Ends the run, if one is going on, and confirms its command.
  void interrupt();

  // For the functions of the commands.
  Engine& engine() { return system; }
  Dialogue& dialogue() { return user; }
  Breakpoints& breakpoints() { return breakpointList; }
  Trace& trace() { return traceLevels; }
  const CommandTable& commands() const { return table; }
  void print(const std::string& line) { user.print(line + '\n'); }
  /// Prints one line, a result or a problem, and ends the command.
  CommandEnd answer(const std::string& line);
  CommandEnd startRun(RunGoal goal);
  CommandEnd restart();
  /// The present command ended a run.
  bool hasInterrupted() const { return interrupted; }

 private:
  CommandEnd dispatch(const std::string& command);
  void finishRun();
  void finish();
  void updateTitle();

  Engine& system;
  Dialogue& user;
  const CommandTable& table;
  Breakpoints breakpointList;
  Trace traceLevels;
  std::optional<Run> run;
  std::optional<PendingTransition> stoppedAt;  ///< by the last run, at a breakpoint
  std::string openCommand;
  bool interrupted = false;
};

}  // namespace tester
