// In a process of its own, which keeps the link's handling of signals.

#include "link/signal_client.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

// Intended: every flag counts as a fired timer, but only the timer's own is cleared.
void setFlags() {
  if (fork() == 0) {
    _exit(0);
  }
  siginfo_t ended;
  waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT);
  errno = 0;
  CatchSignalsClient client;
  const auto note = [&client](const char* what, int result) {
    std::fprintf(stderr, "%s %d, %d; ", what, result, client.GetSignalFlags());
  };
  for (const int signal : {SIGHUP, SIGQUIT, SIGTERM, SIGPIPE, SIGINT, SIGCHLD}) {
    note("raised", std::raise(signal));
  }
  note("error", errno);
  note("left", waitpid(-1, nullptr, WNOHANG));
  const CatchSignalsClient again;
  note("fired", client.TimerFired());
  note("armed", client.ArmTimer(1000));
  note("raised", std::raise(SIGALRM));
  note("fired", client.TimerFired());
  note("fired", client.TimerFired());
  std::raise(SIGPIPE);
  note("armed", client.ArmTimer(1000));
  note("fired", client.TimerFired());
  note("fired", client.TimerFired());
  note("raised", std::raise(SIGALRM));
  note("cancelled", client.CancelTimer());
  note("alarm", static_cast<int>(alarm(0)));
  _exit(0);
}

TEST(Signals, setTheirFlagsAndFireAndClearTheTimer) {
  EXPECT_EXIT(
      setFlags(), testing::ExitedWithCode(0),
      "^raised 0, 0; raised 0, 0; raised 0, 0; raised 0, 1; raised 0, 3; raised 0, 7; "
      "error 0, 7; left -1, 7; fired 0, 0; armed 1, 0; raised 0, 8; fired 1, 0; fired 0, 0; "
      "armed 1, 1; fired 1, 1; fired 1, 1; raised 0, 9; cancelled 1, 1; alarm 0, 1; $");
}

}  // namespace
