#pragma once

#include <functional>
#include <string>

#include "gdb/mi/record.h"
#include "tester_link/user_link.h"

namespace gdb {

/// What is known of the debugged program.
struct Target {
  enum class State {
    kNone,     ///< there is no process
    kStopped,  ///< it lives and stands
    kRunning,
  };
  State state = State::kNone;
  std::string program = {};  ///< path of the executable; empty without one
  std::string remote = {};   ///< "HOST:PORT" or whatever was connected to; empty when it is local
  std::string frame = {};    ///< "main at main.c:12" where it stands, as far as GDB told
  std::string thread = {};   ///< number of the thread that stopped or was chosen last
  std::string signal = {};   ///< name of the signal that stopped it last; empty before one did
};

/// What the words keep for the next time.
struct WordMemory {
  std::string address = {};  ///< that was connected to last
};

/// What the words that are not GDB's own may do. The present word is open from its beginning until
/// finish(), refuse(), or the end of the last console command that it gave without a continuation;
/// then it is confirmed to the user interface. Nothing here blocks.
///
/// A word may be carried out while the target runs because of another command: that one stays open
/// beside it, and ends by itself or by interrupt(), before which the word cannot give commands.
class Control {
 public:
  virtual ~Control() = default;

  virtual tester_link::UserLink& user() = 0;
  virtual const Target& target() const = 0;
  virtual WordMemory& memory() = 0;

  /// Appends a line to the user's log, with the line's end.
  virtual void print(const std::string& line) = 0;

  /// Gives GDB a command as if it had been typed: the log shows "(gdb) COMMAND" and what GDB says.
  /// `then` goes on when GDB's prompt is back; without one the word is finished then.
  virtual void command(const std::string& line, std::function<void()> then = {}) = 0;

  /// Asks GDB by its machine interface, which leaves no trace in the log. `then` gets the result
  /// record, of class "error" with a "msg" when GDB refuses or has ended, and in its `text` what
  /// the command printed ("~" records) meanwhile. GDB answers no query about a running target; such
  /// a query waits until it stops.
  virtual void query(const std::string& line, std::function<void(const mi::Record&)> then) = 0;

  /// Makes of what a word does with an answer the handler of its question; one that was cancelled
  /// or answered wrongly ends the word, with a line in the log.
  virtual tester_link::AnswerHandler then(tester_link::AnswerHandler handler) = 0;

  /// Ends the present word.
  virtual void finish() = 0;
  /// Ends it with a sentence in the log.
  virtual void refuse(const std::string& sentence) = 0;

  /// Stops the running target, or what GDB is doing, and lets it stand; goes on when GDB's prompt
  /// is back, at once when it is there already.
  virtual void interrupt(std::function<void()> then) = 0;
  /// Writes bytes to the standard input of the program; an end of file with endInput().
  virtual void input(const std::string& bytes) = 0;
  virtual void endInput() = 0;
  /// Whether the log marks lines that the program wrote.
  virtual void markOutput(bool isMarked) = 0;
  /// After so many lines of one command's output the user is asked whether to go on; 0 never.
  virtual void setPageLength(std::size_t length) = 0;
  /// Ends GDB and starts it anew, with its breakpoints and its program when it still answers.
  virtual void restartDebugger() = 0;
};

}  // namespace gdb
