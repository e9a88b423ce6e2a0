// Each in a process of its own, which keeps the link's handling of signals.

#include "link/signal_client.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

// Intended: every flag counts as a fired timer, but only the timer's own is cleared.
void setFlags() {
  CatchSignalsClient client;
  const auto note = [&client](const char* what, int result) {
    std::fprintf(stderr, "%s %d, %d; ", what, result, client.GetSignalFlags());
  };
  for (const int signal : {SIGHUP, SIGQUIT, SIGTERM, SIGPIPE, SIGINT}) {
    note("raised", std::raise(signal));
  }
  const CatchSignalsClient again;
  note("fired", client.TimerFired());
  note("armed", client.ArmTimer(1000));
  note("raised", std::raise(SIGALRM));
  note("fired", client.TimerFired());
  note("fired", client.TimerFired());
  note("raised", std::raise(SIGPIPE) + std::raise(SIGALRM));
  note("armed", client.ArmTimer(1000));
  note("fired", client.TimerFired());
  note("fired", client.TimerFired());
  note("raised", std::raise(SIGALRM));
  note("alarm", alarm(1000) > 900 ? 1000 : 0);
  note("cancelled", client.CancelTimer());
  note("alarm", static_cast<int>(alarm(0)));
  _exit(0);
}

TEST(Signals, setTheirFlagsAndFireAndClearTheTimer) {
  EXPECT_EXIT(setFlags(), testing::ExitedWithCode(0),
              "^raised 0, 0; raised 0, 0; raised 0, 0; raised 0, 1; raised 0, 3; "
              "fired 0, 0; armed 1, 0; raised 0, 8; fired 1, 0; fired 0, 0; "
              "raised 0, 9; armed 1, 1; fired 1, 1; fired 1, 1; "
              "raised 0, 9; alarm 1000, 9; cancelled 1, 1; alarm 0, 1; $");
}

void endChildren() {
  const CatchSignalsClient client;
  signal(SIGCHLD, SIG_DFL);
  for (int i = 0; i < 2; ++i) {
    const pid_t child = fork();
    if (child == 0) {
      _exit(0);
    }
    siginfo_t info{};
    waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT);
  }
  CatchSignalsClient::SignalHandler(SIGCHLD);
  const bool isOneLeft = waitpid(-1, nullptr, WNOHANG) > 0 && waitpid(-1, nullptr, 0) == -1;
  // With no child left reaping fails, which what the signal interrupted must not see.
  errno = EPIPE;
  CatchSignalsClient::SignalHandler(SIGCHLD);
  _exit(isOneLeft && errno == EPIPE ? client.GetSignalFlags() : 0);
}

TEST(Signals, ofEndedChildrenReapOneEach) {
  EXPECT_EXIT(endChildren(), testing::ExitedWithCode(kFlagChild), "");
}

}  // namespace
