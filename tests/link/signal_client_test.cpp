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
    std::fprintf(stderr, "%s %d flags %d\n", what, result, client.GetSignalFlags());
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
              "^raised 0 flags 0\nraised 0 flags 0\nraised 0 flags 0\n"
              "raised 0 flags 1\nraised 0 flags 3\n"
              "fired 0 flags 0\narmed 1 flags 0\nraised 0 flags 8\nfired 1 flags 0\n"
              "fired 0 flags 0\nraised 0 flags 9\narmed 1 flags 1\nfired 1 flags 1\n"
              "fired 1 flags 1\nraised 0 flags 9\nalarm 1000 flags 9\n"
              "cancelled 1 flags 1\nalarm 0 flags 1\n$");
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
