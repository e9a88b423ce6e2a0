#include "link/socket_client.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <string>

#include "tests/link/forked_tool.h"

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

class SocketClient : public testing::Test {
 protected:
  SocketClient() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    own = UniqueDescriptor(ends[0]);
    far = UniqueDescriptor(ends[1]);
  }

  void arrive(const std::string& bytes) const {
    ASSERT_EQ(write(far.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }

  // The result and, when positive, the bytes.
  std::pair<int, std::string> readFrom(int fd, int capacity = 100) {
    std::string out(static_cast<std::size_t>(capacity), '!');
    const int count = client.SockRead(fd, out.data(), capacity, kWaitBriefly);
    out.resize(static_cast<std::size_t>(std::max(count, 0)));
    return {count, out};
  }
  std::pair<int, std::string> read(int capacity = 100) { return readFrom(own.get(), capacity); }

  UniqueDescriptor own;
  UniqueDescriptor far;
  SocketControlClient client{-1};
};

using Read = std::pair<int, std::string>;

TEST_F(SocketClient, handsOutFramesThatCameTogetherWithoutTouchingTheSocket) {
  arrive(std::string("one\0two\0", 8));
  EXPECT_EQ(read(), Read(4, std::string("one\0", 4)));
  EXPECT_EQ(readFrom(-1), Read(4, std::string("two\0", 4)));
  EXPECT_EQ(readFrom(-1).first, -1);
  EXPECT_EQ(read().first, kWaitTimedOut);
}

TEST_F(SocketClient, assemblesAFrameCutAtAnyByte) {
  const std::string frame("a frame\0", 8);
  for (std::size_t cut = 1; cut < frame.size(); ++cut) {
    arrive(frame.substr(0, cut));
    EXPECT_EQ(read().first, 0) << cut;
    arrive(frame.substr(cut));
    EXPECT_EQ(read(), Read(8, frame)) << cut;
  }
}

TEST_F(SocketClient, keepsAReadOfTheWholeCapacityWithoutNul) {
  arrive("12345678");
  EXPECT_EQ(read(8), Read(0, ""));
  arrive(std::string(1, '\0'));
  EXPECT_EQ(read(9), Read(9, std::string("12345678\0", 9)));
}

TEST_F(SocketClient, neverGetsPastAFrameLongerThanTheCapacity) {
  const std::string pid = std::to_string(getpid());
  arrive("12345678");
  EXPECT_EQ(read(8).first, 0);
  arrive(std::string("90\0ok\0", 6));
  CaptureStderr();
  EXPECT_EQ(read(8).first, -1);
  // This one text ends in a backslash and an n, as intended.
  EXPECT_EQ(GetCapturedStderr(),
            "PROCESS(PID=" + pid + "): INTERNAL ERROR:Buffersize problem. Continuing.\\n");
  for (int poll = 0; poll < 3; ++poll) {
    CaptureStderr();
    EXPECT_EQ(read(8).first, -1);
    EXPECT_EQ(GetCapturedStderr(),
              "PROCESS(PID=" + pid + "):INTERNAL ERROR:Buffersize problem. Continuing.\n");
  }
}

TEST_F(SocketClient, readsNothingBehindAFrameThatCanNeverGetThrough) {
  arrive("12345678");
  EXPECT_EQ(read(8).first, 0);
  arrive("9");
  CaptureStderr();
  EXPECT_EQ(read(8).first, -1);
  arrive("x");
  EXPECT_EQ(read(8).first, -1);
  const std::string errors = GetCapturedStderr();
  EXPECT_NE(errors.find("):INTERNAL ERROR:Buffersize problem."), std::string::npos) << errors;
  char byte = ' ';
  EXPECT_EQ(recv(own.get(), &byte, 1, MSG_DONTWAIT), 1) << "was read all the same";
}

TEST_F(SocketClient, takesTheEndOfTheStreamForNothingThere) {
  far.close();
  EXPECT_EQ(read().first, 0);
  EXPECT_EQ(read().first, 0);
}

TEST_F(SocketClient, reportsAWaitThatFailed) {
  const int closed = own.get();
  own.close();
  EXPECT_EQ(client.SockWait(closed, kWaitBriefly), kWaitFailed);
  EXPECT_EQ(readFrom(closed).first, kWaitFailed);
}

// Intended: the wait looks at the first 32 descriptors only.
TEST_F(SocketClient, neverSeesDescriptorsFromThirtyTwoOn) {
  arrive("x");
  const UniqueDescriptor high(fcntl(own.get(), F_DUPFD, 32));
  EXPECT_EQ(SocketControlClient::SockWait(own.get(), kWaitForever), 1);
  EXPECT_EQ(SocketControlClient::SockWait(high.get(), kWaitBriefly), kWaitTimedOut);
  EXPECT_EQ(SocketControlClient::SockWait(FD_SETSIZE, kWaitBriefly), kWaitTimedOut);
  EXPECT_EQ(SocketControlClient::SockWait(1 << 30, kWaitBriefly), kWaitTimedOut);
}

// What is said once a process is tested in processes of their own.
std::string errorsOf(const std::function<int()>& body) {
  ForkedTool tool(body);
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, 0) << "failed at step " << end.status;
  const std::string pid = "PROCESS:";
  std::string text = end.errors;
  // The process id is the tool's own.
  if (const std::size_t at = text.find(pid); at != std::string::npos) {
    const std::size_t start = at + pid.size();
    text.replace(start, text.find(':', start) - start, "PID");
  }
  return text;
}

TEST_F(SocketClient, findsTheConnectionBrokenOnceAndThenOnlyRefuses) {
  far.close();
  EXPECT_EQ(errorsOf([&] {
              std::signal(SIGPIPE, SIG_IGN);
              errno = 0;
              for (int step = 1; step <= 3; ++step) {
                if (client.SockSend(own.get(), "x", 2) != -1 || !client.isBroken()) {
                  return step;
                }
                std::fprintf(stderr, "%d\n", step);
              }
              return 0;
            }),
            "PROCESS:PID:No connection to Tessil Postmaster. Continuing.\n1\n"
            "Can't send message, as there was a broken connection.\n2\n3\n");
}

// Intended: errno is not cleared, so what an earlier call left there counts.
TEST_F(SocketClient, takesAnEarlierBrokenPipeForItsOwnThoughTheFrameWentOut) {
  EXPECT_EQ(errorsOf([&] {
              errno = EPIPE;
              if (client.SockSend(own.get(), "x", 2) != 2 || !client.isBroken()) {
                return 1;
              }
              return client.SockSend(own.get(), "y", 2) == -1 ? 0 : 2;
            }),
            "PROCESS:PID:No connection to Tessil Postmaster. Continuing.\n"
            "Can't send message, as there was a broken connection.\n");
  EXPECT_EQ(readFrameText(far.get()), std::string("x\0", 2));
  char byte = ' ';
  EXPECT_EQ(recv(far.get(), &byte, 1, MSG_DONTWAIT), -1) << "the second frame went out";
}

TEST_F(SocketClient, failsWithoutAWordWhenTheSocketIsNoneButThePipeIsNotBroken) {
  EXPECT_EQ(errorsOf([&] {
              errno = 0;
              return client.SockSend(-1, "x", 2) == -1 && !client.isBroken() ? 0 : 1;
            }),
            "");
}

}  // namespace
