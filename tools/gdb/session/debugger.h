#pragma once

#include <memory>
#include <optional>
#include <string>

#include "gdb/console/splitter.h"
#include "gdb/mi/reader.h"
#include "gdb/process/debugger_process.h"
#include "gdb/process/wake_up.h"
#include "gdb/session/query_queue.h"

namespace gdb {

/// What GDB has to tell.
class DebuggerListener {
 public:
  virtual ~DebuggerListener() = default;

  /// GDB takes commands from now on.
  virtual void onReady() = 0;
  virtual void onConsoleText(const std::string& text) = 0;
  virtual void onProgramText(const std::string& text) = 0;
  /// A record that no query asked for.
  virtual void onRecord(const mi::Record& record) = 0;
  /// The console command has ended.
  virtual void onCommandEnd() = 0;
  /// GDB has ended, with that status as of waitpid; there is none any more. Text so far was told.
  virtual void onDebuggerEnd(int waitStatus) = 0;
};

/// GDB, as far as its terminals go: a console command at a time, queries beside it, and what comes
/// of both. There need not be one: then queries fail, and console commands must not be given.
class Debugger {
 public:
  /// Both must outlive the debugger.
  Debugger(WakeUp& wakeUp, DebuggerListener& debuggerListener);
  ~Debugger() { drop(); }
  Debugger(const Debugger&) = delete;
  Debugger& operator=(const Debugger&) = delete;

  /// Starts the GDB in that file. Throws std::system_error.
  void start(const std::string& program, bool readsInitFiles);
  bool isAlive() const { return process != nullptr; }
  bool isReady() const { return isAlive() && ready; }
  /// The terminal for the debugged program.
  const std::string& programTerminal() const { return process->programTerminal(); }

  /// Gives a console command, while none is under way.
  void command(const std::string& line);
  bool isBusy() const { return phase != Phase::kIdle; }
  /// GDB has taken the present command; before that it only was to change its prompt.
  bool hasTakenCommand() const { return phase == Phase::kUnderWay; }
  /// What the console waits for, if nothing more comes.
  Dialogue dialogue() const { return isBusy() ? splitter.dialogue() : Dialogue::kNone; }
  std::string question() const { return splitter.question(); }
  std::string heading() const { return splitter.heading(); }
  void answer(const std::string& line);

  QueryQueue& queries() { return queue; }

  /// The target is to stop.
  void stopTarget();
  /// Stops a process of that number, if it is this GDB's, so that GDB is told.
  void stopProcess(const std::string& process) const;
  /// What GDB does is to end: a command, or a dialogue.
  void interrupt();
  /// Ends it without its help.
  void kill();
  /// Ends it in order.
  void quit() { queue.tell("-gdb-exit"); }

  /// To the standard input of the debugged program.
  void input(const std::string& bytes);
  /// Whether the output of the debugged program is taken.
  void setProgramReading(bool isRead) { readsProgram = isRead; }
  /// Takes what the program has written, wanted or not.
  void drainProgram();

  /// Looks at all terminals, and whether GDB lives.
  void look();
  /// Has the wake-up watch for what concerns GDB.
  void prepareSleep();

 private:
  enum class Phase { kIdle, kSettingPrompt, kUnderWay };

  void lookAtConsole();
  void takeConsole(const std::string& bytes);
  void lookAtMachine();
  void lookAtProgram();
  void lookForEnd();
  void watch(Channel& channel, bool isRead);
  void drop();

  WakeUp& events;
  DebuggerListener& listener;
  std::unique_ptr<DebuggerProcess> process;
  mi::Reader reader;
  ConsoleSplitter splitter;
  QueryQueue queue;
  Phase phase = Phase::kIdle;
  unsigned number = 0;  ///< of the last command
  std::string line;     ///< of the present command
  bool ready = false;
  bool readsProgram = true;
};

}  // namespace gdb
