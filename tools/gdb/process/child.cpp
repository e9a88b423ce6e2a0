#include "gdb/process/child.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <system_error>
#include <thread>

namespace gdb {

namespace {

using Clock = std::chrono::steady_clock;

/// Between two looks for an end that is waited for.
constexpr std::chrono::milliseconds kLookPeriod{2};

/// Gives all signals back their usual effect and lets them come.
void resetSignals() {
  for (int number = 1; number < NSIG; ++number) {
    ::signal(number, SIG_DFL);
  }
  sigset_t none;
  sigemptyset(&none);
  sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// Makes the terminal the standard streams, and lets a program have nothing else.
bool takeTerminal(const std::string& terminal) {
  // The first terminal that the leader of a session opens controls the session.
  const int opened = setsid() < 0 ? -1 : open(terminal.c_str(), O_RDWR | O_CLOEXEC);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (opened < 0 || dup2(opened, stream) < 0) {
      return false;
    }
  }
  return close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC) == 0;
}

std::vector<char*> pointers(std::vector<std::string>& words) {
  std::vector<char*> result;
  result.reserve(words.size() + 1);
  for (std::string& word : words) {
    result.push_back(word.data());
  }
  result.push_back(nullptr);
  return result;
}

}  // namespace

Child::Child(const Launch& launch) {
  std::vector<std::string> words = launch.arguments;
  words.insert(words.begin(), launch.program);
  const std::vector<char*> arguments = pointers(words);
  std::vector<std::string> variables = launch.environment;
  const std::vector<char*> environment = pointers(variables);
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    throw std::system_error(errno, std::generic_category(), launch.program);
  }
  const UniqueDescriptor faultReader(ends[0]);
  UniqueDescriptor faultWriter(ends[1]);
  const pid_t parent = getpid();
  processId = fork();
  if (processId == 0) {
    resetSignals();
    // A parent that is killed cannot end its child, which may not notice the loss of its terminal.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() == parent && takeTerminal(launch.terminal)) {
      execve(launch.program.c_str(), arguments.data(), environment.data());
    }
    static_cast<void>(!write(ends[1], &errno, sizeof errno));
    _exit(EXIT_FAILURE);
  }
  int error = processId < 0 ? errno : 0;
  faultWriter.close();
  if (processId > 0 && read(faultReader.get(), &error, sizeof error) > 0) {
    waitpid(processId, nullptr, 0);
  }
  if (error != 0) {
    throw std::system_error(error, std::generic_category(), launch.program);
  }
}

Child::~Child() {
  if (!ended()) {
    signal(SIGKILL);
    waitpid(processId, nullptr, 0);
  }
}

void Child::signal(int number) const {
  if (!status) {
    kill(processId, number);
  }
}

std::optional<int> Child::ended() {
  int waitStatus = 0;
  if (!status && waitpid(processId, &waitStatus, WNOHANG) != 0) {
    status = waitStatus;
  }
  return status;
}

std::optional<int> Child::waitForEnd(std::chrono::milliseconds longest) {
  const auto giveUp = Clock::now() + longest;
  while (!ended() && Clock::now() < giveUp) {
    std::this_thread::sleep_for(kLookPeriod);
  }
  return status;
}

bool isTracedBy(const std::string& process, pid_t tracer) {
  std::ifstream status("/proc/" + process + "/status");
  const std::string wanted = "TracerPid:\t" + std::to_string(tracer);
  for (std::string line; std::getline(status, line);) {
    if (line == wanted) {
      return true;
    }
  }
  return false;
}

ChildSignals::ChildSignals() {
  ::signal(SIGPIPE, SIG_IGN);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGCHLD);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  source = UniqueDescriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
  if (!source.isOpen()) {
    throw std::system_error(errno, std::generic_category(), "signals");
  }
}

void ChildSignals::take() const {
  signalfd_siginfo news{};
  while (read(source.get(), &news, sizeof news) == static_cast<ssize_t>(sizeof news)) {
  }
}

}  // namespace gdb
