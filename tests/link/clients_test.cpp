// The sockets of the link and the signals that it catches.

#include "link/socket_client.h"

#include <fcntl.h>
#include <sys/select.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>

#include "link/signal_client.h"
#include "tests/link/link_test.h"

namespace {

using testing::ExitedWithCode;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

class SocketClient : public testing::Test, protected SocketPair {
 protected:
  /// The bytes that a read gives, or its result.
  std::string readFrom(int fd, int capacity = 100) {
    std::string out(static_cast<std::size_t>(capacity), '!');
    const int count = client.SockRead(fd, out.data(), capacity, kWaitBriefly);
    return count > 0 ? out.substr(0, static_cast<std::size_t>(count)) : std::to_string(count);
  }
  std::string read(int capacity = 100) { return readFrom(own.get(), capacity); }

  SocketControlClient client{-1};
};

TEST_F(SocketClient, handsOutFramesThatCameTogetherAndAssemblesThoseThatWereCut) {
  arrive(std::string("one\0two\0thr", 11));
  EXPECT_EQ(read(), std::string("one\0", 4));
  EXPECT_EQ(readFrom(-1), std::string("two\0", 4)) << "without touching the socket";
  EXPECT_EQ(readFrom(-1), "-1");
  EXPECT_EQ(read(), "-2") << "nothing more came in time";
  arrive(std::string("ee\0", 3));
  EXPECT_EQ(read(), std::string("three\0", 6));
  const std::string frame("a frame\0", 8);
  for (std::size_t cut = 1; cut < frame.size(); ++cut) {
    arrive(frame.substr(0, cut));
    EXPECT_EQ(read(8), "0") << cut;
    arrive(frame.substr(cut));
    EXPECT_EQ(read(8), frame) << cut;
  }
}

TEST_F(SocketClient, neverGetsPastAFrameLongerThanTheCapacityNorReadsBehindIt) {
  arrive("12345678");
  EXPECT_EQ(read(8), "0");
  arrive("9");
  CaptureStderr();
  EXPECT_EQ(read(8), "-1");
  arrive(std::string("0\0ok\0", 5));
  EXPECT_EQ(read(8), "-1");
  EXPECT_EQ(client.pendingInput(own.get(), 8), SocketInput::kStuck);
  EXPECT_EQ(client.pendingInput(own.get(), 9), SocketInput::kThere);
  EXPECT_EQ(read(9), "-1") << "it turns out to be longer";
  EXPECT_EQ(client.pendingInput(own.get(), 10), SocketInput::kStuck);
  EXPECT_EQ(read(10), "-1");
  // Each text that follows a read ends in a backslash and an n, as intended.
  const std::string here = "PROCESS(PID=~):INTERNAL ERROR:Buffersize problem. Continuing.\n";
  const std::string behind = "PROCESS(PID=~): INTERNAL ERROR:Buffersize problem. Continuing.\\n";
  EXPECT_THAT(GetCapturedStderr(), says(behind + here + behind + here));
  EXPECT_EQ(read(11), std::string("1234567890\0", 11));
  EXPECT_EQ(readFrom(-1), std::string("ok\0", 3));
}

// Intended: the wait looks at the first 32 descriptors only.
TEST_F(SocketClient, awaitsWhatCanComeAndTakesTheEndOfTheStreamForNothingThere) {
  const UniqueDescriptor high(fcntl(own.get(), F_DUPFD, 32));
  arrive("x");
  EXPECT_EQ(SocketControlClient::SockWait(own.get(), kWaitForever), 1);
  EXPECT_EQ(client.awaitable(31), 31);
  for (const int fd : {high.get(), FD_SETSIZE, 1 << 30}) {
    EXPECT_EQ(SocketControlClient::SockWait(fd, kWaitBriefly), kWaitTimedOut);
    EXPECT_EQ(client.awaitable(fd), -1);
  }
  far.close();
  EXPECT_EQ(read() + read(), "00");
  EXPECT_EQ(client.awaitable(own.get()), -1);
  const int closed = own.get();
  own.close();
  EXPECT_EQ(readFrom(closed), "-3");
}

// What is said once a process is tested in processes of their own. Each tells the results of sends.
TEST_F(SocketClient, findsTheConnectionBrokenOnceAndThenOnlyRefuses) {
  const auto sendThrice = [this](int fd, int error) {
    std::signal(SIGPIPE, SIG_IGN);
    errno = error;
    for (int i = 0; i < 3; ++i) {
      const int result = client.SockSend(fd, "x", 2);
      std::fprintf(stderr, "%d%s\n", result, client.isBroken() ? " broken" : "");
    }
    _exit(0);
  };
  const char* const kBroken =
      "PROCESS:~:No connection to Tessil Postmaster. Continuing.\n2 broken\n"
      "Can't send message, as there was a broken connection.\n-1 broken\n-1 broken\n";
  // Intended: errno is not cleared, so what an earlier call left there counts.
  EXPECT_EXIT(sendThrice(own.get(), EPIPE), ExitedWithCode(0), says(kBroken));
  EXPECT_EQ(sent(), std::string("x\0", 2));
  far.close();
  std::string broken = kBroken;
  EXPECT_EXIT(sendThrice(own.get(), 0), ExitedWithCode(0),
              says(broken.replace(broken.find("2 b"), 1, "-1")));
}

// In a process of its own. Intended: every flag counts as a fired timer, but only the timer's own
// is cleared.
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
      setFlags(), ExitedWithCode(0),
      "^raised 0, 0; raised 0, 0; raised 0, 0; raised 0, 1; raised 0, 3; raised 0, 7; "
      "error 0, 7; left -1, 7; fired 0, 0; armed 1, 0; raised 0, 8; fired 1, 0; fired 0, 0; "
      "armed 1, 1; fired 1, 1; fired 1, 1; raised 0, 9; cancelled 1, 1; alarm 0, 1; $");
}

}  // namespace
