#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "gdb/options/options.h"
#include "gdb/process/child.h"
#include "gdb/process/wake_up.h"
#include "gdb/session/answer_watch.h"
#include "gdb/session/breakpoint_file.h"
#include "gdb/session/busy_sign.h"
#include "gdb/session/control.h"
#include "gdb/session/debugger.h"
#include "gdb/session/dialogues.h"
#include "gdb/session/interrupt_ladder.h"
#include "gdb/session/open_lines.h"
#include "gdb/session/output_store.h"
#include "gdb/session/target_watch.h"
#include "gdb/words/words.h"
#include "tester_link/tester_tool.h"

namespace gdb {

/// The tester: carries out the user's lines by GDB, and by the words of its own. One line after
/// the other is carried out; while the target runs because of one, the next is begun beside it,
/// and stops the target if it needs GDB. What happens is told by what has happened: GDB's prompt
/// ends a command, its records tell of the target.
///
/// The sources: session.cpp has the tester's side, lines.cpp the life of lines, control.cpp what
/// words may do, debugger_events.cpp what comes of GDB and its end.
class Session : public tester_link::Tester, public Control, private DebuggerListener {
 public:
  /// `userLink` must outlive the session.
  Session(Options sessionOptions, tester_link::UserLink& userLink);
  ~Session() override = default;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  void start() override;
  void greet() override;
  void takeCommand(const std::string& command) override;
  void userLeft() override;
  void search() override;
  bool isWorking() const override { return false; }
  void work() override {}
  int wakeDescriptor() const override { return wakeUp.descriptor(); }
  void onWake() override;
  void prepareSleep() override;

  tester_link::UserLink& user() override { return link; }
  const Target& target() const override { return watch.target(); }
  WordMemory& memory() override { return wordMemory; }
  void print(const std::string& line) override { output.addLine(line); }
  void command(const std::string& line, std::function<void()> then) override;
  void query(const std::string& line, std::function<void(const mi::Record&)> then) override;
  tester_link::AnswerHandler then(tester_link::AnswerHandler handler) override;
  void finish() override;
  void refuse(const std::string& sentence) override;
  void interrupt(std::function<void()> then) override;
  void input(const std::string& bytes) override;
  void endInput() override;
  void markOutput(bool isMarked) override { output.setMark(isMarked); }
  void setPageLength(std::size_t length) override { output.setPageLength(length); }
  void restartDebugger() override;

 private:
  using Clock = std::chrono::steady_clock;
  /// How long GDB may take for an answer that costs no time, and for its own start.
  static constexpr AnswerWatch::Time kPatience{5};
  static constexpr AnswerWatch::Time kStartPatience{10};
  /// A line that has not begun.
  struct WaitingLine {
    std::string text;
    bool endsRun = false;  ///< the target ran when it came, so that the user wants it to stop
  };
  struct ConsoleCommand {
    OpenLines::Pointer line;
    std::string text;
    std::function<void()> then;  ///< bound to the line
  };

  void onReady() override;
  void onConsoleText(const std::string& text) override;
  void onProgramText(const std::string& text) override;
  void onRecord(const mi::Record& record) override;
  void onCommandEnd() override;
  void onDebuggerEnd(int waitStatus) override;

  // Lines.
  bool canBegin() const;
  void beginWaiting();
  void begin(const std::string& text);
  void carryOut(const std::string& line);
  void give(const std::string& line, std::function<void()> then);
  void giveNext();
  void askForState();
  void askForPlace();
  void endCommand();
  void goOnAfterInterrupt();
  void end(const OpenLines::Pointer& line);
  void runScript(std::deque<std::string> script, std::function<void()> then);

  // GDB.
  void startDebugger();
  void applySettings();
  void beginScript();
  void endStart();
  void offerStart(const std::string& why);
  void showFault(const std::string& why);
  void tell(const std::function<void()>& box);
  void noteRead();
  void offerKill();
  void climb(Clock::time_point now);
  void stopProcesses();
  void noteBesidePrompt();
  void tellGarbage(const std::string& text);
  void watchAnswers(Clock::time_point now);

  bool isConsoleBusy() const { return debugger.isBusy() || isEnding; }
  bool isTargetRunning() const { return target().state == Target::State::kRunning; }
  void update();
  void showTarget();

  Options options;
  tester_link::UserLink& link;
  WakeUp wakeUp;
  std::optional<ChildSignals> childSignals;
  OutputStore output;
  Debugger debugger;
  Dialogues dialogues;
  TargetWatch watch;
  InterruptLadder ladder;
  AnswerWatch answers;
  BusySign busySign;
  BreakpointFile breakpoints;
  OpenLines lines;
  WordMemory wordMemory;
  tester_link::SearchLists lastSearch = usualSearchLists();
  std::deque<WaitingLine> waiting;
  std::deque<ConsoleCommand> commands;    ///< that have not begun
  std::optional<ConsoleCommand> present;  ///< the one that GDB carries out
  std::vector<std::function<void()>> afterInterrupt;
  std::function<void()> afterStart;          ///< what goes on when a new GDB is ready
  std::deque<std::function<void()>> unread;  ///< boxes about GDB's end, each by what shows it
  std::optional<std::string> usualButtons;   ///< folder of the set for all programs
  std::string shownFolder;                   ///< whose buttons the user interface was told to load
  std::string frameSetting;                  ///< that GDB has
  bool greeted = false;
  bool settled = false;      ///< GDB has its settings and knows what to debug
  bool isEnding = false;     ///< the present command's prompt is back, its end not told
  bool isReplacing = false;  ///< GDB was told to end, for the next one
  bool hasLoaded = false;    ///< a GDB has loaded what the options name
  bool garbageTold = false;  ///< since the last command began
};

}  // namespace gdb
