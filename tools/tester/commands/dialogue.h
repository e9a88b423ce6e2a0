#pragma once

#include <string>

namespace tester {

/// The user as the commands see him: a log to print to, and a few signs of the tester's state.
/// Commands never wait for him. A command that asks him something stays open, as a run does
/// (CommandEnd::kOpen), until his answer arrives.
class Dialogue {
 public:
  virtual ~Dialogue() = default;

  /// Appends whole lines, each with its line end, to the log.
  virtual void print(const std::string& lines) = 0;

  /// Whether trace lines of a run can be taken now; a run pauses while they cannot.
  virtual bool acceptsTrace() const = 0;

  /// Ends a command: `command` goes into the user's history. All text comes before it.
  virtual void confirm(const std::string& command) = 0;

  /// A run has begun or ended.
  virtual void showBusy(bool isBusy) = 0;

  /// What the user's window shows as its title, besides its own name.
  virtual void showTitle(const std::string& title) = 0;

  // Boxes. They are answered through Debugger::takeAnswer(); the debugger asks on behalf of the
  // commands and has at most one question open.

  /// Asks a question that is answered by AnswerKind::kYes or kNo.
  virtual void askYesNo(const std::string& caption, const std::string& text) = 0;

  /// Shows an error, answered by AnswerKind::kAcknowledged.
  virtual void showError(const std::string& caption, const std::string& text) = 0;

  /// Shows a warning; no answer comes.
  virtual void showWarning(const std::string& caption, const std::string& text) = 0;

  /// Asks the user interface to leave, as soon as the present command is confirmed; its user may
  /// refuse.
  virtual void askToExit() = 0;
};

}  // namespace tester
