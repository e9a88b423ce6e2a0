#include "postmaster/tester_care.h"

#include "link/message_numbers.h"

#include <algorithm>
#include <utility>

namespace postmaster {

bool TesterCare::isMissed(pid_t pid) const {
  return (pid == lastTester || pid == newTester) && !switchboard.state().uiHasLeft() &&
         !watch.hasEndedSession();
}

void TesterCare::ended(const Children::Ended& tester, const std::string& howItEnded) {
  if (tester.pid == std::exchange(killedTester, 0)) {
    startAgain(tester.child);
    return;
  }
  // A question that is open about its silence is as good as one about its end.
  const bool isAsked =
      std::exchange(silentTester, 0) != 0 ||
      switchboard.askUser("Korvane - Tester ended", howItEnded + ".\n\nStart it again?");
  endedTester = isAsked ? std::optional(tester.child) : std::nullopt;
}

void TesterCare::startAgain(const Children::Child& tester) {
  const std::string why = children.start(tester.program, tester.command);
  if (why.empty()) {
    newTester = children.newest();
    return;
  }
  const std::string text = "cannot start " + tester.program + ": " + why;
  complaints.say(text);
  switchboard.warnUser("Korvane - Tester ended", text + ".");
}

void TesterCare::look() {
  if (const pid_t tester = testerProcess(); tester != 0) {
    lastTester = tester;  // its connection may be gone before it is known that it has ended
  }
  takeAnswer();
  switchboard.awaitTester(endedTester || killedTester != 0 || isStarting());
  const std::optional<TesterWatch::TimePoint> due = deadline();
  if (due && *due <= watch.now()) {
    askAboutSilence();
  }
}

std::optional<TesterWatch::TimePoint> TesterCare::deadline() const {
  return silentTester == 0 ? watch.deadline() : std::nullopt;
}

void TesterCare::takeAnswer() {
  const std::optional<bool> isWanted = switchboard.takeAnswer();
  if (!isWanted) {
    return;
  }
  const pid_t silent = std::exchange(silentTester, 0);
  const std::optional<Children::Child> gone = std::exchange(endedTester, std::nullopt);
  if (*isWanted && gone) {
    startAgain(*gone);
  } else if (*isWanted) {
    killedTester = silent;
    children.killOne(silent);
  }
}

void TesterCare::askAboutSilence() {
  watch.reset();
  const pid_t tester = testerProcess();
  if (tester == 0) {
    return;
  }
  const std::string text = processText(children.nameOf(tester), tester) + " has not answered for " +
                           std::to_string(watch.patience().count()) +
                           " seconds.\n\nEnd it and start it again?";
  if (switchboard.askUser("Korvane - Tester does not answer", text)) {
    silentTester = tester;
  }
}

bool TesterCare::isStarting() const {
  const std::vector<pid_t> living = children.living();
  return std::find(living.begin(), living.end(), newTester) != living.end() &&
         switchboard.toolTypeOf(newTester) == 0;
}

/// The child that is connected as the tester; 0 for none.
pid_t TesterCare::testerProcess() const {
  const std::vector<pid_t> living = children.living();
  const auto found = std::find_if(living.begin(), living.end(), [this](pid_t pid) {
    return switchboard.toolTypeOf(pid) == NELKV;
  });
  return found != living.end() ? *found : 0;
}

}  // namespace postmaster
