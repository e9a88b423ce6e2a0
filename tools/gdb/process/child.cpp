#include "gdb/process/child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/signalfd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <system_error>
#include <thread>

namespace gdb {

namespace {

using Clock = std::chrono::steady_clock;

/// Between two looks for an end that is waited for.
constexpr std::chrono::milliseconds kLookPeriod{2};

class FileActions {
 public:
  explicit FileActions(const std::string& terminal) {
    posix_spawn_file_actions_init(&actions);
    // The first terminal that the leader of a session opens controls the session.
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, terminal.c_str(), O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, STDIN_FILENO, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
  }
  ~FileActions() { posix_spawn_file_actions_destroy(&actions); }
  FileActions(const FileActions&) = delete;
  FileActions& operator=(const FileActions&) = delete;

  const posix_spawn_file_actions_t* get() const { return &actions; }

 private:
  posix_spawn_file_actions_t actions{};
};

class Attributes {
 public:
  Attributes() {
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    sigfillset(&signals);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~Attributes() { posix_spawnattr_destroy(&attributes); }
  Attributes(const Attributes&) = delete;
  Attributes& operator=(const Attributes&) = delete;

  const posix_spawnattr_t* get() const { return &attributes; }

 private:
  posix_spawnattr_t attributes{};
};

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
  std::vector<std::string> variables = launch.environment;
  const int error =
      posix_spawn(&processId, launch.program.c_str(), FileActions(launch.terminal).get(),
                  Attributes().get(), pointers(words).data(), pointers(variables).data());
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
