#pragma once

#include "postmaster/message.h"
#include "support/descriptor.h"

#include <chrono>
#include <ostream>
#include <string>

namespace ctl {

enum ExitStatus : int {
  kExitConfirmed = 0,
  kExitFailure = 1,  ///< no session, or it ended before the command was confirmed
  kExitUsage = 2,
  kExitTimeout = 3,
};

/// A visitor of a running session: connects to its Postmaster as an external tool, has the tester
/// carry out one command, and hands on what it says to it.
class Session {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  /// Connects. Returns an empty text, or why it failed.
  std::string open(TimePoint deadline);

  /// Sends `command` and writes the tester's texts to `output` until it confirms the command. The
  /// result is an exit status; what is wrong is in fault() then.
  int run(const std::string& command, TimePoint deadline, std::ostream& output);
  const std::string& fault() const { return why; }

 private:
  bool send(int dest, int tag, const ToolMessage& parameters);
  frames::Message receive(TimePoint deadline);
  int fail(int status, std::string text);

  UniqueDescriptor socket;
  postmaster::FrameSplitter frames;
  bool isTimedOut = false;
  std::string why;
};

}  // namespace ctl
