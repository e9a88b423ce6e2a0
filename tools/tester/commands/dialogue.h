#pragma once

#include <string>
#include <vector>

#include "tester/commands/output_log.h"

namespace tester {

/// Limits of a number that is asked for.
struct NumberRange {
  int low = 0;
  int high = 0;
  bool isAllAllowed = false;  ///< the user may answer kAllNumbers instead of a number
};

inline constexpr char kAllNumbers[] = "*";

/// Which files a file question shows.
struct FileFilter {
  std::string title;
  std::string extension;  ///< without a point
  std::string label;
};

/// Names that the user may want to search his log for.
struct SearchLists {
  std::vector<std::string> processes;
  std::vector<std::string> signals;
  std::vector<std::string> timers;
};

/// The user as the commands see him: a log to print to, and a few signs of the tester's state.
/// Commands never wait for him. A command that asks him something stays open, as a run does
/// (CommandEnd::kOpen), until his answer arrives.
class Dialogue {
 public:
  virtual ~Dialogue() = default;

  /// Appends whole lines, each with its line end, to the user's log, and to the log file if there
  /// is one.
  void print(const std::string& lines) {
    file.write(lines);
    show(lines);
  }
  OutputLog& log() { return file; }

  /// Whether trace lines of a run can be taken now; a run pauses while they cannot.
  virtual bool acceptsTrace() const = 0;

  /// Ends a command: `command` goes into the user's history. All text comes before it.
  virtual void confirm(const std::string& command) = 0;

  /// A run has begun or ended.
  virtual void showBusy(bool isBusy) = 0;

  /// What the user's window shows as its title, besides its own name.
  virtual void showTitle(const std::string& title) = 0;

  /// Names the present system and the directory in which the user works on it.
  virtual void showSystem(const std::string& directory, const std::string& name) = 0;

  // Boxes and questions. They are answered through Debugger::takeAnswer(); the debugger asks on
  // behalf of the commands and has at most one question open. All but askYesNo() and showError()
  // may be answered by AnswerKind::kCancelled instead.

  /// Asks a question that is answered by AnswerKind::kYes or kNo.
  virtual void askYesNo(const std::string& caption, const std::string& text) = 0;

  /// Shows an error, answered by AnswerKind::kAcknowledged.
  virtual void showError(const std::string& caption, const std::string& text) = 0;

  /// Shows a warning; no answer comes.
  virtual void showWarning(const std::string& caption, const std::string& text) = 0;

  /// Answered by kText.
  virtual void askText(const std::string& text) = 0;

  /// Answered by kNumber. A text that begins with "Instance number (*)" is answered by
  /// kAllNumbers without the user.
  virtual void askNumber(const std::string& text) = 0;
  virtual void askNumberInRange(const std::string& text, const NumberRange& range) = 0;

  /// One of the items, however many; answered by kChoice. Without items a notice is shown and the
  /// question is cancelled.
  virtual void askChoice(const std::string& text, const std::vector<std::string>& items) = 0;

  /// Any of the items; answered by kBits.
  virtual void askBits(const std::string& text, const std::vector<std::string>& items) = 0;

  /// The parameters of a signal; answered by kParameters. There is at least one definition.
  virtual void askParameters(const std::string& text,
                             const std::vector<std::string>& definitions) = 0;

  /// A file; answered by kFile.
  virtual void askFile(const FileFilter& filter, const std::string& directory) = 0;

  /// The source directory, at present `directory`; answered by kDirectory.
  virtual void askDirectory(const std::string& directory) = 0;

  /// Offers names to search for. Only a cancelled search is answered, by kCancelled.
  virtual void offerSearch(const SearchLists& lists) = 0;

  /// Asks the user interface to leave, as soon as the present command is confirmed; its user may
  /// refuse.
  virtual void askToExit() = 0;

 private:
  virtual void show(const std::string& lines) = 0;

  OutputLog file;
};

}  // namespace tester
