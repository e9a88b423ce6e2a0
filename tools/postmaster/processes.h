#pragma once

#include "postmaster/options.h"
#include "support/descriptor.h"

#include <sys/types.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace postmaster {

/// Finds the program `name`: as it stands when it has a slash, else in `ownFolder`, else along
/// `searchPath` (folders between colons). Nothing when no executable file is there.
std::optional<std::string> findProgram(const std::string& name, const std::string& ownFolder,
                                       const std::string& searchPath);

/// The tools that run as this process's children, each in a process group of its own, so that an
/// interrupt from the terminal reaches the Postmaster alone and the end stays orderly.
class Children {
 public:
  /// Starts `program` with the words of `command` as its arguments, default signal dispositions and
  /// no signal blocked. Returns an empty text, or why it failed.
  std::string start(const std::string& program, const ToolCommand& command);

  /// A child as it was started.
  struct Child {
    std::string program;
    ToolCommand command;
  };
  struct Ended {
    pid_t pid = 0;
    Child child;
    int waitStatus = 0;  ///< as of waitpid
  };
  /// Reaps the children that have ended.
  std::vector<Ended> reap();

  /// Sends `signal` to all that live, with their process groups.
  void signalAll(int signal) const;

  /// Kills the child `pid`, if it lives, with its process group.
  void killOne(pid_t pid) const;

  /// Name of the child `pid`, which lives.
  const std::string& nameOf(pid_t pid) const { return children.at(pid).command.front(); }

  /// The child that was started last.
  pid_t newest() const { return started; }

  /// Process ids of those that live.
  std::vector<pid_t> living() const;
  bool isEmpty() const { return children.empty(); }

 private:
  std::map<pid_t, Child> children;
  pid_t started = 0;
};

/// "nelkv (process 77)"
std::string processText(const std::string& name, pid_t pid);

/// "ended with status 3" or "was killed by signal 9".
std::string describeEnd(int waitStatus);

/// Turns the signals that the Postmaster cares for into a descriptor for poll: SIGINT, SIGTERM,
/// SIGHUP (unless it was ignored at start) and SIGCHLD. Ignores SIGPIPE. Make one before any
/// child. The signals stay blocked to the end of the process: one that comes while the process is
/// on its way out must not spoil its exit status.
class SignalSource {
 public:
  SignalSource();
  SignalSource(const SignalSource&) = delete;
  SignalSource& operator=(const SignalSource&) = delete;

  int fd() const { return source.get(); }

  struct Arrived {
    bool stop = false;  ///< one of the signals that end the Postmaster
    bool childEnded = false;
  };
  /// Takes all signals that wait.
  Arrived take();

 private:
  UniqueDescriptor source;
};

}  // namespace postmaster
