// What comes of GDB: its beginning, text and records, and its end, by itself or by force.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include "gdb/session/session.h"
#include "gdb/session/startup.h"
#include "postmaster/processes.h"

namespace gdb {

namespace {

using tester_link::Answer;
using tester_link::AnswerKind;

/// What GDB says at its start, before or after it takes commands.
constexpr std::string_view kInterfaceText = "New UI allocated\n";
/// How GDB answers when it knows no second user interface.
constexpr char kTooOldText[] = "Undefined command: \"new-ui\"";

std::optional<std::string> findDebugger(const std::string& name) {
  const char* path = std::getenv("PATH");
  return postmaster::findProgram(name, "", path == nullptr ? "/usr/local/bin:/usr/bin:/bin" : path);
}

std::string whyMissing(const std::string& name) {
  return name.find('/') == std::string::npos
             ? "There is no " + name + " here. Install the package " + name + '.'
             : name + " is no program that can be started.";
}

}  // namespace

void Session::startDebugger() {
  const std::string program = target().program.empty() ? options.program : target().program;
  const std::string name = debuggerFor(options, program);
  const std::optional<std::string> path = findDebugger(name);
  settled = false;
  unread.clear();
  std::string why = path ? "" : whyMissing(name);
  try {
    if (path) {
      debugger.start(*path, options.readsInitFiles);
      answers.expect(Clock::now(), kStartPatience);
      return;
    }
  } catch (const std::system_error& error) {
    why = error.what();
  }
  print(why);
  showFault(why);
  showTarget();
  endStart();
}

/// Goes on with what waited for a GDB that takes commands, also when it will never come.
void Session::endStart() {
  if (const auto next = std::exchange(afterStart, {})) {
    next();
  }
}

void Session::onReady() {
  answers.end();
  applySettings();
  if (greeted) {
    beginScript();
  }
}

void Session::applySettings() {
  frameSetting.clear();
  for (const std::string& setting : settingsFor(debugger.programTerminal())) {
    debugger.queries().ask(setting, {});
  }
}

/// Has GDB load what it is to debug: what the options name at first, and for a later GDB what the
/// one before it had.
void Session::beginScript() {
  if (!debugger.isReady() || settled) {
    return;
  }
  Options wanted = options;
  // What was never loaded is tried again, all of it.
  if (hasLoaded) {
    const bool isSame = target().program == options.program;
    wanted = {.program = target().program};
    wanted.arguments = isSame ? options.arguments : std::vector<std::string>();
  }
  std::vector<std::string> script = firstCommands(wanted);
  if (breakpoints.isThere()) {
    script.push_back("source " + breakpoints.path());
  }
  const auto end = [this] {
    settled = hasLoaded = true;
    finish();
    endStart();
  };
  lines.open("", false, [&] { runScript({script.begin(), script.end()}, end); });
  showTarget();
}

void Session::onConsoleText(const std::string& text) {
  const bool isGreeting = !settled && text.starts_with(kInterfaceText);
  output.addConsole(text.substr(isGreeting ? kInterfaceText.size() : 0),
                    debugger.isBusy() && !isTargetRunning());
  dialogues.noteText(Clock::now());
  if (!debugger.isReady() && text.find(kTooOldText) != std::string::npos) {
    const std::string why = "This GDB is too old: version 7.12 or a later one is needed.";
    showFault(why);
    debugger.kill();
  }
}

void Session::onProgramText(const std::string& text) {
  output.addProgram(text);
}

void Session::onRecord(const mi::Record& record) {
  switch (record.kind) {
    case mi::Record::Kind::kExec:
    case mi::Record::Kind::kNotify:
      watch.take(record);
      if (isTargetRunning()) {
        output.stopCounting();
      }
      update();
      if (!isConsoleBusy()) {
        noteBesidePrompt();
      }
      break;
    case mi::Record::Kind::kTarget:
      // GDB shows what its target says nowhere else.
      output.addConsole(record.text, false);
      break;
    case mi::Record::Kind::kGarbage:
      tellGarbage(record.text);
      break;
    default:
      break;
  }
}

/// The target has done something on its own, behind the prompt, which no prompt will tell.
void Session::noteBesidePrompt() {
  showTarget();
  if (!isTargetRunning()) {
    ladder.end();
    goOnAfterInterrupt();
  }
}

void Session::tellGarbage(const std::string& text) {
  constexpr std::size_t kMostShown = 80;
  if (!text.empty() && !std::exchange(garbageTold, true)) {
    print("GDB reports what cannot be read: " + text.substr(0, kMostShown));
  }
}

void Session::onDebuggerEnd(int waitStatus) {
  const bool isReplaced = std::exchange(isReplacing, false);
  const std::string told = "GDB " + postmaster::describeEnd(waitStatus) + '.';
  isEnding = false;
  answers.end();
  ladder.end();
  dialogues.close();
  watch.forgetProcess();
  output.endCommand();
  if (!isReplaced) {
    print(told);
  }
  // Whatever waited for GDB ends with it.
  std::deque<ConsoleCommand> cut = std::exchange(commands, {});
  if (present) {
    cut.push_front(std::move(*present));
    present.reset();
  }
  for (const ConsoleCommand& each : cut) {
    end(each.line);
  }
  goOnAfterInterrupt();
  showTarget();
  update();
  if (isReplaced) {
    startDebugger();
  } else {
    endStart();
    offerStart(told);
  }
}

void Session::offerStart(const std::string& why) {
  tell([this, why] {
    link.askYesNo(kBoxCaption, why + "\nStart it anew? It gets its program and breakpoints again.",
                  [this](const Answer& answer) {
                    noteRead();
                    if (answer.kind == AnswerKind::kYes && !debugger.isAlive()) {
                      startDebugger();
                    }
                  });
  });
}

void Session::showFault(const std::string& why) {
  tell([this, why] { link.showError(kBoxCaption, why, [this](const Answer&) { noteRead(); }); });
}

/// Shows a box about GDB's end, which is kept for a later user until one has read it.
void Session::tell(const std::function<void()>& box) {
  unread.push_back(box);
  if (greeted) {
    box();
  }
}

void Session::noteRead() {
  if (!unread.empty()) {
    unread.pop_front();
  }
}

void Session::offerKill() {
  link.askYesNo(kBoxCaption,
                "GDB does not answer.\nEnd it? Its breakpoints are kept. Cancel waits on.",
                [this](const Answer& answer) {
                  if (answer.kind == AnswerKind::kYes) {
                    debugger.kill();
                  }
                });
}

/// Does what is due to stop the target or GDB.
void Session::climb(Clock::time_point now) {
  const auto step = ladder.step(now);
  if (!step) {
    return;
  }
  switch (*step) {
    case InterruptLadder::Step::kStopTarget:
      debugger.stopTarget();
      break;
    case InterruptLadder::Step::kSignal:
      debugger.interrupt();
      break;
    case InterruptLadder::Step::kStopProcess:
      stopProcesses();
      break;
    case InterruptLadder::Step::kAskUser:
      offerKill();
      break;
  }
}

/// A program that blocks SIGINT, or waits for it by itself, is not stopped by GDB's ways.
void Session::stopProcesses() {
  if (!isTargetRunning()) {
    return;
  }
  debugger.queries().tell("-interpreter-exec console \"handle SIGSTOP nopass\"");
  for (const std::string& process : watch.processes()) {
    debugger.stopProcess(process);
  }
}

/// GDB may take its time for a command, but not for what costs it none.
void Session::watchAnswers(Clock::time_point now) {
  if (debugger.hasTakenCommand()) {
    answers.end();
  }
  if (!answers.isLate(now)) {
    return;
  }
  if (isReplacing) {
    debugger.kill();
  } else if (!link.isAsking()) {
    offerKill();
  }
}

}  // namespace gdb
