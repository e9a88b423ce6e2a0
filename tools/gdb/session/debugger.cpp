// Before each console command GDB's prompt is changed, over the machine interface, to one with the
// command's number, so that the end of this very command is known. Both terminals of GDB are always
// read: GDB hangs on one that is not, and answers on neither then.

#include "gdb/session/debugger.h"

#include <algorithm>
#include <csignal>
#include <utility>

namespace gdb {

namespace {

/// Bytes taken at once of a terminal, so that the link is served between.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 18;

/// What GDB says before it lets the target run.
constexpr std::string_view kRunBeginnings[] = {"Continuing.",
                                               "Starting program: ", "Run till exit from "};

/// Bytes of the line in which GDB lets the target run, if the text begins with one.
std::size_t beginningOfRun(std::string_view text) {
  for (const std::string_view beginning : kRunBeginnings) {
    if (text.starts_with(beginning)) {
      return std::min(text.find('\n'), text.size() - 1) + 1;
    }
  }
  return 0;
}

constexpr char kGone[] = "GDB is not running.";

}  // namespace

Debugger::Debugger(WakeUp& wakeUp, DebuggerListener& debuggerListener)
    : events(wakeUp), listener(debuggerListener), queue([this](const std::string& query) {
        if (process != nullptr) {
          process->machine().write(query);
        }
      }) {}

void Debugger::start(const std::string& program, bool readsInitFiles) {
  process = std::make_unique<DebuggerProcess>(program, readsInitFiles);
  reader = {};
  splitter = {};
  ready = false;
  phase = Phase::kIdle;
}

void Debugger::command(const std::string& text) {
  line = text + '\n';
  phase = Phase::kSettingPrompt;
  ++number;
  queue.ask("-gdb-set prompt " + ConsoleSplitter::promptOf(number),
            [this, present = number](const mi::Record& result) {
              // An answer that came too late is one to a GDB that has gone.
              if (present == number && phase == Phase::kSettingPrompt && result.name == "done") {
                phase = Phase::kUnderWay;
                splitter.answered();  // what stood before asks nothing
                process->console().write(line);
              }
            });
}

void Debugger::answer(const std::string& text) {
  if (process != nullptr) {
    splitter.answered();
    process->console().write(text + '\n');
  }
}

void Debugger::stopTarget() {
  queue.tell("-exec-interrupt");
}

void Debugger::stopProcess(const std::string& pid) const {
  if (process != nullptr && isTracedBy(pid, process->child().pid())) {
    ::kill(std::stoi(pid), SIGSTOP);
  }
}

void Debugger::interrupt() {
  if (process != nullptr) {
    process->child().signal(SIGINT);
  }
}

void Debugger::kill() {
  if (process != nullptr) {
    process->child().signal(SIGKILL);
  }
}

void Debugger::input(const std::string& bytes) {
  if (process != nullptr) {
    process->program().write(bytes);
  }
}

void Debugger::look() {
  if (process != nullptr) {
    lookAtConsole();
  }
  if (process != nullptr) {
    lookAtMachine();
  }
  if (process != nullptr) {
    lookForEnd();
  }
}

void Debugger::drainProgram() {
  if (process != nullptr) {
    lookAtProgram();
  }
}

void Debugger::lookAtProgram() {
  process->program().flush();
  const std::string bytes = process->program().read(kMostAtOnce);
  if (!bytes.empty()) {
    listener.onProgramText(bytes);
  }
}

void Debugger::lookAtConsole() {
  process->console().flush();
  const std::string bytes = process->console().read(kMostAtOnce);
  const std::size_t beginning = beginningOfRun(bytes);
  takeConsole(bytes.substr(0, beginning));
  // What the program wrote before it stopped comes before what GDB tells of the stop, also what
  // had no room so far.
  if (readsProgram || !bytes.empty()) {
    lookAtProgram();
  }
  takeConsole(bytes.substr(beginning));
}

void Debugger::takeConsole(const std::string& bytes) {
  for (const ConsolePiece& piece : splitter.feed(bytes)) {
    if (!piece.prompt) {
      listener.onConsoleText(piece.text);
    } else if (*piece.prompt == number && phase == Phase::kUnderWay) {
      phase = Phase::kIdle;
      listener.onCommandEnd();
    }
  }
}

void Debugger::lookAtMachine() {
  process->machine().flush();
  for (const mi::Record& record : reader.feed(process->machine().read(kMostAtOnce))) {
    if (record.kind == mi::Record::Kind::kPrompt) {
      if (!std::exchange(ready, true)) {
        process->machineIsOpen();
        listener.onReady();
      }
    } else if (!queue.take(record)) {
      listener.onRecord(record);
    }
  }
}

void Debugger::lookForEnd() {
  const std::optional<int> status = process->child().ended();
  if (!status) {
    return;
  }
  for (const ConsolePiece& piece : splitter.feed(process->console().read(kMostAtOnce))) {
    if (!piece.prompt) {
      listener.onConsoleText(piece.text);
    }
  }
  lookAtProgram();
  drop();
  phase = Phase::kIdle;
  queue.fail(kGone);
  listener.onDebuggerEnd(*status);
}

void Debugger::watch(Channel& channel, bool isRead) {
  const bool isWatched = !channel.hasEnded();
  events.watch(channel.descriptor(), (isWatched && isRead ? WakeUp::kInput : 0U) |
                                         (channel.hasToWrite() ? WakeUp::kRoom : 0U));
}

void Debugger::prepareSleep() {
  if (process != nullptr) {
    watch(process->console(), true);
    watch(process->machine(), true);
    watch(process->program(), readsProgram);
  }
}

void Debugger::drop() {
  if (process != nullptr) {
    for (Channel* channel : {&process->console(), &process->machine(), &process->program()}) {
      events.forget(channel->descriptor());
    }
    process.reset();
  }
}

}  // namespace gdb
