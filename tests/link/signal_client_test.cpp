#include "link/signal_client.h"

#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace {

constexpr std::array kTakenOver = {SIGHUP, SIGPIPE, SIGINT, SIGQUIT, SIGTERM, SIGCHLD, SIGALRM};

// Gives the process its own handling back.
class Signals : public testing::Test {
 protected:
  Signals() {
    for (std::size_t i = 0; i < kTakenOver.size(); ++i) {
      sigaction(kTakenOver[i], nullptr, &former[i]);
    }
  }
  ~Signals() override {
    alarm(0);
    for (std::size_t i = 0; i < kTakenOver.size(); ++i) {
      sigaction(kTakenOver[i], &former[i], nullptr);
    }
  }

 private:
  std::array<struct sigaction, kTakenOver.size()> former{};
};

TEST_F(Signals, setTheirFlagsEachTimeTheyCome) {
  for (int round = 0; round < 2; ++round) {
    const CatchSignalsClient client;
    EXPECT_EQ(client.GetSignalFlags(), 0) << "construction clears the flags";
    std::raise(SIGPIPE);
    EXPECT_EQ(client.GetSignalFlags(), kFlagPipe);
    std::raise(SIGINT);
    std::raise(SIGINT);
    EXPECT_EQ(client.GetSignalFlags(), kFlagPipe | kFlagInterrupt);
  }
}

void startChildThatEnds() {
  if (fork() == 0) {
    _exit(0);
  }
}

TEST_F(Signals, ofAnEndedChildReapOne) {
  const CatchSignalsClient client;
  sigset_t childOnly;
  sigset_t before;
  sigemptyset(&childOnly);
  sigaddset(&childOnly, SIGCHLD);
  sigprocmask(SIG_BLOCK, &childOnly, &before);
  startChildThatEnds();
  siginfo_t info{};
  ASSERT_EQ(waitid(P_ALL, 0, &info, WEXITED | WNOWAIT), 0);
  sigprocmask(SIG_SETMASK, &before, nullptr);
  EXPECT_EQ(client.GetSignalFlags(), kFlagChild);
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "the child was not reaped";
  EXPECT_EQ(errno, ECHILD);
  // With no child left reaping fails, which what the signal interrupted must not see.
  errno = EPIPE;
  std::raise(SIGCHLD);
  EXPECT_EQ(errno, EPIPE);
}

TEST_F(Signals, ofTheTimerArriveAndAreClearedAlone) {
  CatchSignalsClient client;
  std::raise(SIGPIPE);
  EXPECT_EQ(client.ArmTimer(1), 1);
  while (client.GetSignalFlags() == kFlagPipe) {
    pause();
  }
  EXPECT_EQ(client.GetSignalFlags(), kFlagPipe | kFlagAlarm);
  EXPECT_EQ(client.CancelTimer(), 1);
  EXPECT_EQ(client.GetSignalFlags(), kFlagPipe);

  client.ArmTimer(1000);
  EXPECT_EQ(client.CancelTimer(), 1);
  EXPECT_EQ(alarm(0), 0U) << "the alarm still runs";
}

// Intended: every flag counts as a fired timer, but only the timer's own is cleared.
TEST_F(Signals, countAsAFiredTimerWhicheverTheyAre) {
  CatchSignalsClient client;
  EXPECT_EQ(client.TimerFired(), 0);
  CatchSignalsClient::SignalHandler(SIGALRM);
  EXPECT_EQ(client.TimerFired(), 1);
  EXPECT_EQ(client.TimerFired(), 0);
  std::raise(SIGPIPE);
  EXPECT_EQ(client.TimerFired(), 1);
  EXPECT_EQ(client.TimerFired(), 1);
  EXPECT_EQ(client.GetSignalFlags(), kFlagPipe);
}

}  // namespace
