// What the words may do.

#include <algorithm>
#include <utility>

#include "gdb/session/session.h"

namespace gdb {

namespace {

using tester_link::Answer;
using tester_link::AnswerKind;

/// How long GDB may take to end when it is told to.
constexpr std::chrono::seconds kQuitTime{2};

/// End of file of a terminal.
constexpr char kEndOfInput[] = "\x04";

}  // namespace

void Session::command(const std::string& line, std::function<void()> then) {
  print("(gdb) " + line);
  give(line, std::move(then));
}

void Session::query(const std::string& line, std::function<void(const mi::Record&)> then) {
  debugger.queries().ask(line, lines.bind(std::move(then)));
  if (!debugger.isAlive()) {
    debugger.queries().fail("GDB is not running.");
  }
}

tester_link::AnswerHandler Session::then(tester_link::AnswerHandler handler) {
  return lines.bind([this, handler = std::move(handler)](const Answer& answer) {
    switch (answer.kind) {
      case AnswerKind::kWrong:
        refuse(answer.text);
        break;
      case AnswerKind::kCancelled:
        refuse("Cancelled.");
        break;
      case AnswerKind::kTooLong:
        refuse("The command ends here; it may name what it would have asked for.");
        break;
      default:
        handler(answer);
    }
  });
}

void Session::finish() {
  end(lines.current());
}

void Session::end(const OpenLines::Pointer& line) {
  if (line == nullptr || !line->isOpen) {
    return;
  }
  lines.close(line);
  output.flush();
  if (line->isConfirmed) {
    link.confirm(line->text);
  }
}

void Session::refuse(const std::string& sentence) {
  print(sentence);
  finish();
}

void Session::interrupt(std::function<void()> then) {
  if (!isConsoleBusy() && !isTargetRunning()) {
    then();
    return;
  }
  afterInterrupt.emplace_back(lines.bind(std::move(then)));
  if (!isEnding && !ladder.isClimbing()) {
    ladder.begin(Clock::now(), isTargetRunning());
    climb(Clock::now());
  }
}

/// A process that was attached to, or let go of its terminal, would not get it.
void Session::input(const std::string& bytes) {
  const auto readsHere = [this](const std::string& process) {
    return isOpenIn(process, debugger.programTerminal());
  };
  const std::vector<std::string> processes = watch.processes();
  if (std::any_of(processes.begin(), processes.end(), readsHere)) {
    debugger.input(bytes);
  } else {
    print("Nothing was sent: the program has its input elsewhere.");
  }
}

void Session::endInput() {
  input(kEndOfInput);
}

void Session::restartDebugger() {
  afterStart = lines.bind([this] { finish(); });
  if (!debugger.isAlive()) {
    startDebugger();
    return;
  }
  isReplacing = true;
  debugger.quit();
  answers.expect(Clock::now(), kQuitTime);
}

}  // namespace gdb
