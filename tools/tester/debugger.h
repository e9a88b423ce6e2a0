#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tester/run.h"
#include "tester/words.h"
#include "tester_link/tester_tool.h"

namespace tester {

struct CommandRow;

/// Carries out the user's commands on a simulated system. At most one command is open at a time,
/// because of its question, besides a run: a command that only looks or sends a signal goes with
/// the run, which pauses while that command asks; every other ends the run first. Every command
/// prints at least its own prompt line before it is confirmed.
class Debugger : public tester_link::Tester {
 public:
  using AnswerHandler = tester_link::AnswerHandler;

  /// Both must outlive the debugger.
  Debugger(SimulatedSystem& debuggedSystem, tester_link::UserLink& userLink);

  void greet() override;
  void takeCommand(const std::string& command) override;
  void userLeft() override { interrupt(); }
  void search() override;
  bool isWorking() const override { return run.has_value() && !user().isAsking(); }
  void work() override;

  // For the functions of the commands, which may throw a Refusal: the log tells it, and a box when
  // it is the user's answer that is refused. A command goes on while a question of its is open and
  // while the run that it began goes on; otherwise it ends when its function returns.

  SimulatedSystem& system() { return simulated; }
  tester_link::UserLink& user() const { return link; }
  std::vector<Breakpoint>& breakpoints() { return breakpointList; }
  Trace& trace() { return traceSettings; }
  void print(const std::string& line) { link.print(line + '\n'); }

  /// Makes of what a command does with an answer the handler of its question; one that was
  /// cancelled or answered wrongly ends the command.
  AnswerHandler then(AnswerHandler handler);
  /// Prints whole lines, or `otherwise` when there are none. Asks before each page but the first.
  void printList(const std::string& lines, const std::string& otherwise = "");
  /// 0: lists are not paged.
  void setPageLength(std::size_t lines) { pageLength = lines; }
  /// Adds a breakpoint, or finds one that says the same; its number.
  int addBreakpoint(Breakpoint breakpoint);

  void startRun(RunGoal goal);
  /// The present command ended a run.
  bool hasInterrupted() const { return interrupted; }
  /// Begins anew, and warns of signals that are lost.
  void restart();

  /// Where relative names of files begin; absolute. At the start it is the working directory.
  const std::string& directory() const { return sourceDirectory; }
  void changeDirectory(const std::string& name);
  /// The system of the file begins anew, in its directory.
  void openSystem(const std::string& fileName);

 private:
  void carryOut(const CommandRow& row, const Words& words);
  void refuse(const std::string& problem);
  AnswerHandler goOn(AnswerHandler handler);
  void interrupt();
  void finishRun();
  void finish();
  void showSystem();
  void updateTitle();

  SimulatedSystem& simulated;
  tester_link::UserLink& link;
  std::vector<Breakpoint> breakpointList;
  int lastBreakpoint = 0;  ///< number of the one added last
  Trace traceSettings;
  std::optional<Run> run;
  std::optional<PendingTransition> stoppedAt;  ///< by the last run, at a breakpoint
  std::string openCommand;
  std::string runCommand;  ///< the one that began the run
  std::size_t pageLength = 200;
  std::string sourceDirectory;
  std::string symbolFile;  ///< name without its directory; empty before one was opened
  bool interrupted = false;
  bool startedRun = false;  ///< by the present command
};

}  // namespace tester
