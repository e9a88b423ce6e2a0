#pragma once

#include <chrono>
#include <optional>

namespace gdb {

/// What is tried, one thing after the other, to get GDB's prompt back.
class InterruptLadder {
 public:
  using Clock = std::chrono::steady_clock;

  enum class Step {
    kStopTarget,   ///< GDB is told to stop its target
    kSignal,       ///< GDB gets SIGINT
    kStopProcess,  ///< the target itself gets the signal that it cannot block
    kAskUser,      ///< nothing helps: whether to wait on or to end GDB
  };

  /// Begins, or begins anew. A target that stands, or that GDB has not started yet, is not told to
  /// stop.
  void begin(Clock::time_point now, bool isTargetRunning);
  void end() { nextTime.reset(); }
  bool isClimbing() const { return nextTime.has_value(); }

  /// The step that is due; the ladder ends with the last.
  std::optional<Step> step(Clock::time_point now);
  std::optional<Clock::time_point> deadline() const { return nextTime; }

 private:
  std::optional<Clock::time_point> nextTime;
  bool isTargetStep = false;
  bool isProcessStep = false;
  int signals = 0;  ///< sent so far
};

}  // namespace gdb
