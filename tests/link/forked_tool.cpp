#include "tests/link/forked_tool.h"

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "link/port_control.h"
#include "tests/support/deadline.h"

namespace {

bool waitReadable(int fd) {
  pollfd entry{fd, POLLIN, 0};
  return poll(&entry, 1, static_cast<int>(kAnswerTime.count())) > 0;
}

std::string readToEnd(int fd) {
  std::string text;
  std::array<char, 4096> piece;
  while (waitReadable(fd)) {
    const ssize_t count = read(fd, piece.data(), piece.size());
    if (count <= 0) {
      return text;
    }
    text.append(piece.data(), static_cast<std::size_t>(count));
  }
  ADD_FAILURE() << "the tool still runs; so far: " << text;
  return text;
}

}  // namespace

ForkedTool::ForkedTool(const std::function<int()>& body) {
  std::array<int, 2> ends{};
  EXPECT_EQ(pipe(ends.data()), 0);
  std::fflush(nullptr);
  processId = fork();
  if (processId == 0) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    dup2(ends[1], STDERR_FILENO);
    close(ends[0]);
    close(ends[1]);
    _exit(body());
  }
  close(ends[1]);
  errors = UniqueDescriptor(ends[0]);
}

ForkedTool::~ForkedTool() {
  if (processId > 0) {
    kill(processId, SIGKILL);
    waitpid(processId, nullptr, 0);
  }
}

ToolEnd ForkedTool::end() {
  ToolEnd result;
  result.errors = readToEnd(errors.get());
  if (testing::Test::HasFailure()) {
    kill(processId, SIGKILL);
  }
  int status = 0;
  EXPECT_EQ(waitpid(processId, &status, 0), processId);
  processId = -1;
  constexpr int kSignalBase = 128;
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : kSignalBase + WTERMSIG(status);
  return result;
}

std::string PrivateRendezvous::socketName(int port) {
  return socketFileName(port, getpid());
}

void PrivateRendezvous::writePortFile() const {
  std::ofstream(portFileName()) << kPort << '\n';
}

void PrivateRendezvous::listen() {
  writePortFile();
  listener = UniqueDescriptor(socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string name = socketName();
  ASSERT_LT(name.size(), sizeof address.sun_path);
  std::memcpy(address.sun_path, name.c_str(), name.size() + 1);
  ASSERT_EQ(bind(listener.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(::listen(listener.get(), 1), 0);
}

void PrivateRendezvous::accept() {
  ASSERT_TRUE(waitReadable(listener.get())) << "no tool connects";
  connection = UniqueDescriptor(::accept(listener.get(), nullptr, nullptr));
  ASSERT_TRUE(connection.isOpen());
}

void PrivateRendezvous::send(const std::string& bytes) const {
  ASSERT_EQ(write(connection.get(), bytes.data(), bytes.size()),
            static_cast<ssize_t>(bytes.size()));
}

std::string readFrameText(int fd) {
  std::string text;
  char byte = '!';
  while (byte != '\0' && waitReadable(fd) && read(fd, &byte, 1) == 1) {
    text.push_back(byte);
  }
  return text;
}
