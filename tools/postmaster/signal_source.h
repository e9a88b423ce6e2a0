#pragma once

#include "postmaster/unique_fd.h"

namespace postmaster {

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
  UniqueFd source;
};

}  // namespace postmaster
