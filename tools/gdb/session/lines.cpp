// The life of the user's lines: when each is begun, what GDB is given for it, and its end.

#include <utility>

#include "gdb/session/session.h"
#include "gdb/session/startup.h"
#include "gdb/words/texts.h"
#include "gdb/words/words.h"
#include "support/text.h"

namespace gdb {

bool Session::canBegin() const {
  if (!settled && debugger.isAlive()) {
    return false;
  }
  return lines.isEmpty() ? !isConsoleBusy() : debugger.isBusy() && isTargetRunning();
}

void Session::beginWaiting() {
  while (!waiting.empty() && canBegin() && !link.isAsking()) {
    const std::string next = std::move(waiting.front());
    waiting.pop_front();
    begin(next);
  }
}

void Session::begin(const std::string& text) {
  output.stopKeeping();
  lines.open(text, true, [this, &text] {
    // The program may care for the blanks of what it is given to read.
    const std::string line = singleLine(text);
    print("(gdb) " + trimmed(line));
    if (!takeWord(*this, line)) {
      carryOut(trimmed(line));
    }
  });
  update();
}

/// Has GDB carry out a line that is no word. A run that is going on is ended before.
void Session::carryOut(const std::string& line) {
  if (!debugger.isAlive()) {
    refuse("GDB is not running.");
    offerStart("GDB is not running.");
  } else if (isConsoleBusy()) {
    interrupt([this, line] { give(line, {}); });
  } else {
    give(line, {});
  }
}

/// Gives GDB a command for the present line as soon as it can take it.
void Session::give(const std::string& line, std::function<void()> then) {
  if (!debugger.isAlive()) {
    refuse("GDB is not running.");
    return;
  }
  if (!then) {
    then = [this] { finish(); };
  }
  commands.push_back({lines.current(), line, lines.bind(std::move(then))});
  giveNext();
}

void Session::giveNext() {
  if (commands.empty() || isConsoleBusy() || !debugger.isReady()) {
    return;
  }
  present = std::move(commands.front());
  commands.pop_front();
  output.beginCommand();
  garbageTold = false;
  const std::string setting = frameSettingFor(present->text);
  if (std::exchange(frameSetting, setting) != setting) {
    debugger.queries().ask(setting, {});
  }
  debugger.command(present->text);
  answers.expect(Clock::now(), kPatience);
}

/// GDB's prompt is back. What it does not tell by itself is asked for before the command's end is
/// told; the answers come after all records of the command.
void Session::onCommandEnd() {
  isEnding = true;
  ladder.end();
  dialogues.close();
  // What the program wrote belongs before the command's end.
  debugger.drainProgram();
  update();
  askForState();
}

void Session::askForState() {
  answers.expect(Clock::now(), kPatience);
  debugger.queries().ask("-list-thread-groups", [this](const mi::Record& result) {
    watch.takeGroups(result);
    if (watch.takeBreakpointChange()) {
      breakpoints.save(debugger.queries());
    }
    askForPlace();
  });
}

void Session::askForPlace() {
  debugger.queries().ask("info connections", [this](const mi::Record& result) {
    watch.takeConnections(result);
    const auto end = [this](const mi::Record& frame) {
      watch.takeFrame(frame);
      answers.end();
      endCommand();
    };
    if (target().state == Target::State::kStopped && target().frame.empty()) {
      debugger.queries().ask("-stack-info-frame", end);
    } else {
      end({});
    }
  });
}

/// All is known of the command's end; it is told as soon as the user has all its text.
void Session::endCommand() {
  if (output.isUnwanted() && present && debugger.isBusy()) {
    debugger.interrupt();
  }
  if (!isEnding || answers.isExpecting() || output.isPaging()) {
    return;
  }
  isEnding = false;
  output.endCommand();
  for (const std::string& note : watch.takeNotes()) {
    print(note);
  }
  showTarget();
  update();
  if (present) {
    const ConsoleCommand ended = std::move(*present);
    present.reset();
    ended.then();
  }
  goOnAfterInterrupt();
  giveNext();
}

void Session::goOnAfterInterrupt() {
  for (const auto& next : std::exchange(afterInterrupt, {})) {
    next();
  }
}

/// Carries out commands for the present line, one after the other.
void Session::runScript(std::deque<std::string> script, std::function<void()> then) {
  if (script.empty()) {
    then();
    return;
  }
  const std::string first = std::move(script.front());
  script.pop_front();
  command(first,
          [this, rest = std::move(script), then = std::move(then)] { runScript(rest, then); });
}

}  // namespace gdb
