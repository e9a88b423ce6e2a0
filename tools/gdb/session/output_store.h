#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "tester_link/user_link.h"

namespace gdb {

/// The text of the user's log on its way to him, from three sources: GDB's console, the debugged
/// program, and nelgdb itself. Each begins a line of its own; the program's are marked. A command
/// of GDB's with much text asks once whether the user wants it all. What the window does not take
/// fast enough waits up to a bound; of GDB's text the rest is dropped and counted, the program's
/// may be left where it is.
class OutputStore {
 public:
  using Clock = tester_link::UserLink::Clock;

  /// Bytes that wait at most.
  static constexpr std::size_t kMostWaiting = std::size_t{16} << 20;
  static constexpr std::size_t kUsualPage = 200;

  /// `user` must outlive the store. `pagingEnded` is called after the user's answer.
  OutputStore(tester_link::UserLink& userLink, std::function<void()> pagingEnded);

  /// A command of GDB's begins: its lines are counted.
  void beginCommand();
  void endCommand();
  /// Text from GDB's console. What comes while the target runs does not count: the user must stay
  /// able to stop it.
  void addConsole(std::string_view text, bool isCounted);
  void addProgram(std::string_view text);
  /// A line of nelgdb's own, without its end.
  void addLine(std::string_view line);
  /// Keeps a copy of all text from now on, until stopKeeping(), for a user who comes later.
  void startKeeping() { isKeeping = true; }
  void stopKeeping();
  /// Shows the copy again, if there is one; false without one.
  bool repeatKept();
  /// Goes on where GDB's text ended: what the user answered to it.
  void addAnswer(std::string_view answer);

  /// The user has not answered yet; what comes meanwhile is kept back.
  bool isPaging() const { return state == Paging::kAsking; }
  /// The user wants no more of this command's text.
  bool isUnwanted() const { return state == Paging::kUnwanted; }
  /// Whether the program's output is taken at the moment.
  bool hasRoom() const;

  /// An unfinished line waits a little for its end, so that it goes out as one.
  void flush();
  std::optional<Clock::time_point> flushTime() const { return unfinishedTime; }

  void setMark(bool isMarked) { marksProgram = isMarked; }
  /// 0: never asks.
  void setPageLength(std::size_t length) { pageLength = length; }
  /// The user has gone, and the question with him.
  void forgetUser();

 private:
  enum class Source { kConsole, kProgram, kOwn };
  enum class Paging { kCounting, kAsking, kWanted, kUnwanted };

  void add(Source source, std::string_view text);
  void put(std::string_view text);
  void show(const std::string& text);
  void endLine();
  void tellDropped();
  void askForMore();
  void takeAnswer(bool isMoreWanted);

  tester_link::UserLink& user;
  std::function<void()> pagingEnded;
  bool marksProgram = true;
  std::size_t pageLength = kUsualPage;
  Paging state = Paging::kCounting;
  std::size_t lines = 0;    ///< of the present command, so far
  std::size_t dropped = 0;  ///< lines for which there was no room
  std::string keptBack;     ///< of GDB and its program, while the user is asked
  std::string keptLines;    ///< nelgdb's own, while the user is asked
  Source lastSource = Source::kOwn;
  std::string unfinished;  ///< line, not gone out yet
  std::optional<Clock::time_point> unfinishedTime;
  bool isAtLineStart = true;
  bool isKeeping = false;
  std::string copy;         ///< of the text so far
  bool endsForced = false;  ///< a line's end was put where its source had none
  bool wasReturn = false;   ///< the last byte was a carriage return
};

}  // namespace gdb
