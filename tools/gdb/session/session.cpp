// The session as the user's tester: how users come and go, and when it wakes.

#include "gdb/session/session.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "gdb/session/startup.h"
#include "gdb/words/words.h"
#include "support/text.h"
#include "tester_link/button_folder.h"

namespace gdb {

namespace {

namespace fs = std::filesystem;

/// Between two texts: as fast as the window takes them beside its other work.
constexpr std::chrono::milliseconds kTextPeriod{10};

constexpr char kGreeting[] =
    "Tester on GDB. \"help nelgdb\" lists its own words, \"help\" those of GDB.";
constexpr char kNoDebugger[] = "no debugger";

}  // namespace

Session::Session(Options sessionOptions, tester_link::UserLink& userLink)
    : options(std::move(sessionOptions)),
      link(userLink),
      output(userLink, [this] { endCommand(); }),
      debugger(wakeUp, *this),
      dialogues(userLink, debugger, output) {
  link.paceAllText(kTextPeriod);
  watch.target().program = options.program;
}

void Session::start() {
  childSignals.emplace();
  wakeUp.watch(childSignals->descriptor(), WakeUp::kInput);
  startDebugger();
}

void Session::greet() {
  shownFolder.clear();
  busySign.hide();
  const bool isFirst = !std::exchange(greeted, true);
  if (isFirst) {
    // The one who is greeted first may be none, and the next one is to see all.
    output.startKeeping();
  }
  if (isFirst || !output.repeatKept()) {
    print(kGreeting);
  }
  if (lines.isEmpty()) {
    beginScript();
  }
  showTarget();
  for (const auto& box : unread) {
    box();
  }
}

void Session::takeCommand(const std::string& command) {
  const bool isStop = equalIgnoringCase(singleLine(command), "stop");
  if (isStop && isConsoleBusy() && waiting.empty()) {
    begin(command);
    return;
  }
  if (isStop) {
    // What runs now stops at once, and what waits when it is begun: "stop" comes behind it.
    interrupt([] {});
  }
  waiting.push_back({command, isTargetRunning() || isStop});
  beginWaiting();
}

void Session::userLeft() {
  lines.closeAll();
  waiting.clear();
  commands.clear();
  afterInterrupt.clear();
  dialogues.close();
  output.forgetUser();
  if (debugger.isBusy()) {
    ladder.begin(Clock::now(), isTargetRunning());
  }
}

void Session::search() {
  if (isConsoleBusy() || !debugger.isReady()) {
    link.offerSearch(lastSearch);
    return;
  }
  collectSearchLists(*this, [this](const tester_link::SearchLists& found) {
    lastSearch = found;
    link.offerSearch(found);
  });
}

void Session::onWake() {
  childSignals->take();
  debugger.setProgramReading(output.hasRoom());
  debugger.look();
  const Clock::time_point now = Clock::now();
  if (output.flushTime().value_or(Clock::time_point::max()) <= now) {
    output.flush();
  }
  dialogues.look(now, isTargetRunning());
  climb(now);
  watchAnswers(now);
  update();
  beginWaiting();
}

void Session::prepareSleep() {
  debugger.setProgramReading(output.hasRoom());
  debugger.prepareSleep();
  std::optional<Clock::time_point> next;
  const auto consider = [&next](std::optional<Clock::time_point> moment) {
    next = moment && next ? std::min(moment, next) : (moment ? moment : next);
  };
  consider(dialogues.deadline());
  consider(output.flushTime());
  consider(ladder.deadline());
  consider(answers.deadline());
  consider(busySign.deadline());
  if (!waiting.empty() && canBegin()) {
    consider(Clock::now());
  }
  wakeUp.setDeadline(next);
}

/// Shows what has become of GDB and its target.
void Session::update() {
  const bool isBusy = isConsoleBusy() || isTargetRunning();
  debugger.queries().setHeld(debugger.isBusy() && isTargetRunning());
  if (busySign.update(isBusy, Clock::now())) {
    link.showBusy(busySign.isShown());
    showTarget();
  }
}

void Session::showTarget() {
  const std::string& program = target().program;
  std::string folder = buttonFolder(options, program);
  if (folder.empty()) {
    usualButtons = usualButtons ? usualButtons : tester_link::usualButtonFolder("gdb");
    folder = *usualButtons;
  }
  // The buttons are loaded anew each time, also those that the user changed.
  if (!folder.empty() && std::exchange(shownFolder, folder) != folder) {
    link.showSystem(folder, program.empty() ? "gdb" : fs::path(program).filename().string());
  }
  link.showTitle(debugger.isAlive() ? watch.title() : kNoDebugger);
}

}  // namespace gdb
