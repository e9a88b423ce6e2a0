#pragma once

#include <deque>
#include <optional>
#include <string>

#include "tester/commands/breakpoints.h"
#include "tester/commands/command_table.h"
#include "tester/commands/dialogue.h"
#include "tester/commands/history.h"
#include "tester/commands/paged_list.h"
#include "tester/commands/question.h"
#include "tester/commands/run.h"
#include "tester/commands/session.h"

namespace tester {

/// Carries out the user's commands on an engine. At most one command is open at a time, besides a
/// run: a command that only looks or sends a signal goes with the run, which pauses while that
/// command has a question open; every other ends the run first. A command waits for the answer to
/// an open question: the user interface may have sent it before the question came up there. Every
/// command prints at least its own prompt line before it is confirmed: the user interface releases
/// the waiting pieces of a command line only after some text.
class Debugger {
 public:
  static constexpr std::size_t kUsualPageLength = 200;

  /// All three must outlive the debugger.
  Debugger(Engine& debuggedEngine, Dialogue& userDialogue, const CommandTable& commandTable);

  /// Prints what system this is and where help is found, and sets the title.
  void greet();

  /// Carries out one command as the user typed it, at once or after the open question. An empty
  /// one does nothing but end a run.
  void execute(const std::string& command);

  /// Whether there is a run to go on with: one that waits for the answer to a question is none.
  bool isRunning() const { return run.has_value() && !question; }

  /// Goes on with the run for a short time. Only while one is going on.
  void runSlice();

  /// Ends the run, if one is going on, and confirms its command.
  void interrupt();

  /// The open question cannot reach the user: says so and ends its command.
  void dropQuestion();

  /// Goes on with the command that asked; a cancelled question ends it. An answer that fits no
  /// open question is ignored.
  void takeAnswer(const Answer& reply);

  /// Offers the user the names of the system to search for, at once or after the open question.
  void offerSearch();

  /// Forgets the open question, its command and what waits for its end, without confirming
  /// commands: the user interface that sent them has gone.
  void abandonQuestion();

  // For the functions of the commands.
  Engine& engine() { return system; }
  Dialogue& dialogue() { return user; }
  Breakpoints& breakpoints() { return breakpointList; }
  Trace& trace() { return traceLevels; }
  const History& history() const { return firedTransitions; }
  Session& session() { return sessionData; }
  const CommandTable& commands() const { return table; }
  void print(const std::string& line) { user.print(line + '\n'); }
  /// Prints one line, a result or a problem, and ends the command.
  CommandEnd answer(const std::string& line);
  /// Prints a list, whole lines, and ends the command. Asks before each page but the first.
  CommandEnd printList(std::string lines);
  /// 0: lists are not paged.
  void setPageLength(std::size_t lines) { pageLength = lines; }
  CommandEnd askYesNo(const std::string& caption, const std::string& text, AnswerHandler handler);
  /// Shows an error; the command ends when the user has acknowledged it.
  CommandEnd showError(const std::string& caption, const std::string& text);
  /// Refuses an answer: shows the problem as an error.
  CommandEnd refuse(const std::string& problem);

  // Questions (debugger_questions.cpp). The handler gets an answer of the kind that fits; a choice,
  // bits and a number in a range have been checked. The user may cancel each of them.
  CommandEnd askText(const std::string& text, AnswerHandler handler);
  CommandEnd askNumber(const std::string& text, AnswerHandler handler);
  CommandEnd askNumberInRange(const std::string& text, NumberRange range, AnswerHandler handler);
  CommandEnd askChoice(const std::string& text, const Words& items, AnswerHandler handler);
  CommandEnd askBits(const std::string& text, const Words& items, AnswerHandler handler);
  CommandEnd askParameters(const std::string& text, const Words& definitions,
                           AnswerHandler handler);
  CommandEnd askFile(const FileFilter& filter, AnswerHandler handler);
  CommandEnd askDirectory(AnswerHandler handler);

  CommandEnd startRun(RunGoal goal);
  CommandEnd restart();
  /// The present command ended a run.
  bool hasInterrupted() const { return interrupted; }

 private:
  void carryOutWaiting();
  void carryOut(const std::string& command);
  CommandEnd dispatch(const std::string& command);
  CommandEnd showPages(PagedList list);
  CommandEnd await(AnswerKind kind, AnswerHandler handler);
  void takeCancel();
  void offerDueSearch();
  void finishRun();
  void finish();
  void updateTitle();

  Engine& system;
  Dialogue& user;
  const CommandTable& table;
  Breakpoints breakpointList;
  Trace traceLevels;
  History firedTransitions;
  Session sessionData;
  std::optional<Run> run;
  std::optional<PendingTransition> stoppedAt;  ///< by the last run, at a breakpoint
  std::string openCommand;
  std::string runCommand;  ///< the one that began the run
  std::optional<OpenQuestion> question;
  std::deque<std::string> waitingCommands;  ///< for the answer to the question
  std::size_t pageLength = kUsualPageLength;
  bool interrupted = false;
  bool searchIsDue = false;
  bool searchIsOffered = false;  ///< and may still be cancelled
};

}  // namespace tester
