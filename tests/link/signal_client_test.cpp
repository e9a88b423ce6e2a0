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
    for (const int ignored : {SIGHUP, SIGQUIT, SIGTERM}) {
      std::raise(ignored);
    }
    EXPECT_EQ(client.GetSignalFlags(), 0);
    std::raise(SIGPIPE);
    EXPECT_EQ(client.GetSignalFlags(), kFlagPipe);
    std::raise(SIGINT);
    std::raise(SIGINT);
    EXPECT_EQ(client.GetSignalFlags(), kFlagPipe | kFlagInterrupt);
  }
}

TEST_F(Signals, ofEndedChildrenReapOneEach) {
  const auto startTwo = [] {
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
  };
  EXPECT_EXIT(startTwo(), testing::ExitedWithCode(kFlagChild), "");
}

// Intended: every flag counts as a fired timer, but only the timer's own is cleared.
TEST_F(Signals, ofTheTimerAreClearedAlone) {
  CatchSignalsClient client;
  EXPECT_EQ(client.TimerFired(), 0);
  EXPECT_EQ(client.ArmTimer(1), 1);
  while (client.GetSignalFlags() == 0) {
    pause();
  }
  EXPECT_EQ(client.GetSignalFlags(), kFlagAlarm);
  EXPECT_EQ(client.TimerFired(), 1);
  EXPECT_EQ(client.TimerFired(), 0);
  std::raise(SIGALRM);
  std::raise(SIGPIPE);
  EXPECT_EQ(client.ArmTimer(1000), 1);
  EXPECT_EQ(client.GetSignalFlags(), kFlagPipe);
  EXPECT_EQ(client.TimerFired(), 1);
  EXPECT_EQ(client.TimerFired(), 1);
  std::raise(SIGALRM);
  EXPECT_EQ(client.CancelTimer(), 1);
  EXPECT_EQ(client.GetSignalFlags(), kFlagPipe);
  EXPECT_EQ(alarm(0), 0U) << "the alarm still runs";
}

}  // namespace
