#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "gdb/session/debugger.h"
#include "gdb/session/output_store.h"

namespace gdb {

/// Caption of the boxes about GDB.
inline constexpr char kBoxCaption[] = "Korvane - GDB";

/// Makes questions to the user of those that GDB asks on its console, and gives GDB his answers.
class Dialogues {
 public:
  using Clock = std::chrono::steady_clock;

  /// All must outlive the object.
  Dialogues(tester_link::UserLink& userLink, Debugger& debuggerAsking, OutputStore& outputStore);

  /// Text has come on the console, which may end in a question.
  void noteText(Clock::time_point now);
  /// Asks the user if nothing has come for a while and the text is a question. No more than yes or
  /// no can be asked while the target runs: all else is text that looks so.
  void look(Clock::time_point now, bool isTargetRunning);
  std::optional<Clock::time_point> deadline() const { return lookTime; }
  /// The present question, if any, is none any more.
  void close();

 private:
  void ask(Dialogue dialogue);
  std::string headingOr(const std::string& text) const;
  void askYesNo();
  void askLine(const std::string& text);
  void askMenu();
  tester_link::AnswerHandler answer(tester_link::AnswerHandler handler);
  void give(const std::string& line);

  tester_link::UserLink& user;
  Debugger& debugger;
  OutputStore& output;
  std::optional<Clock::time_point> lookTime;
  unsigned question = 0;  ///< number of the present one
};

}  // namespace gdb
