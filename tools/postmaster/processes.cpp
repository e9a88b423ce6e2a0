#include "postmaster/processes.h"

#include <spawn.h>
#include <sys/signalfd.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <sstream>

namespace postmaster {

namespace {

bool isExecutable(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
         access(path.c_str(), X_OK) == 0;
}

/// Attributes of a tool's start.
class SpawnAttributes {
 public:
  SpawnAttributes() {
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    posix_spawnattr_setsigmask(&attributes, &signals);
    for (const int changed : {SIGPIPE, SIGINT, SIGQUIT, SIGTERM, SIGCHLD}) {
      sigaddset(&signals, changed);
    }
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
  }
  ~SpawnAttributes() { posix_spawnattr_destroy(&attributes); }
  SpawnAttributes(const SpawnAttributes&) = delete;
  SpawnAttributes& operator=(const SpawnAttributes&) = delete;

  const posix_spawnattr_t* get() const { return &attributes; }

 private:
  posix_spawnattr_t attributes{};
};

}  // namespace

std::optional<std::string> findProgram(const std::string& name, const std::string& ownFolder,
                                       const std::string& searchPath) {
  if (name.find('/') != std::string::npos) {
    return isExecutable(name) ? std::optional(name) : std::nullopt;
  }
  std::istringstream folders(ownFolder + ":" + searchPath);
  for (std::string folder; std::getline(folders, folder, ':');) {
    const std::string path = (folder.empty() ? "." : folder) + "/" + name;
    if (isExecutable(path)) {
      return path;
    }
  }
  return std::nullopt;
}

std::string Children::start(const std::string& program, const ToolCommand& command) {
  ToolCommand words = command;
  std::vector<char*> arguments;
  for (std::string& word : words) {
    arguments.push_back(word.data());
  }
  arguments.push_back(nullptr);
  const SpawnAttributes attributes;
  pid_t pid = 0;
  const int error =
      posix_spawn(&pid, program.c_str(), nullptr, attributes.get(), arguments.data(), environ);
  if (error != 0) {
    return std::strerror(error);
  }
  children[pid] = {program, command};
  started = pid;
  return {};
}

std::vector<Children::Ended> Children::reap() {
  std::vector<Ended> ended;
  for (auto it = children.begin(); it != children.end();) {
    int status = 0;
    const pid_t result = waitpid(it->first, &status, WNOHANG);
    if (result == it->first) {
      ended.push_back({it->first, it->second, status});
    }
    it = result != 0 ? children.erase(it) : std::next(it);
  }
  return ended;
}

void Children::signalAll(int signal) const {
  for (const auto& [pid, child] : children) {
    kill(-pid, signal);
  }
}

void Children::killOne(pid_t pid) const {
  if (children.contains(pid)) {
    kill(-pid, SIGKILL);
  }
}

std::vector<pid_t> Children::living() const {
  std::vector<pid_t> pids;
  for (const auto& [pid, child] : children) {
    pids.push_back(pid);
  }
  return pids;
}

std::string processText(const std::string& name, pid_t pid) {
  return name + " (process " + std::to_string(pid) + ")";
}

std::string describeEnd(int waitStatus) {
  return WIFSIGNALED(waitStatus) ? "was killed by signal " + std::to_string(WTERMSIG(waitStatus))
                                 : "ended with status " + std::to_string(WEXITSTATUS(waitStatus));
}

SignalSource::SignalSource() {
  signal(SIGPIPE, SIG_IGN);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGCHLD);
  struct sigaction hangUp {};
  sigaction(SIGHUP, nullptr, &hangUp);
  if (hangUp.sa_handler != SIG_IGN) {
    sigaddset(&signals, SIGHUP);
  }
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  source = UniqueDescriptor(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
}

SignalSource::Arrived SignalSource::take() {
  Arrived arrived;
  signalfd_siginfo info{};
  while (read(source.get(), &info, sizeof info) == static_cast<ssize_t>(sizeof info)) {
    if (info.ssi_signo == SIGCHLD) {
      arrived.childEnded = true;
    } else {
      arrived.stop = true;
    }
  }
  return arrived;
}

}  // namespace postmaster
