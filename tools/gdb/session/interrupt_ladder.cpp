#include "gdb/session/interrupt_ladder.h"

#include <utility>

namespace gdb {

namespace {

/// Time for one step to help.
constexpr std::chrono::seconds kStepTime{1};
/// A script whose every command must be stopped takes more than one.
constexpr int kMostSignals = 5;

}  // namespace

void InterruptLadder::begin(Clock::time_point now, bool isTargetRunning) {
  nextTime = now;
  isTargetStep = isProcessStep = isTargetRunning;
  signals = 0;
}

std::optional<InterruptLadder::Step> InterruptLadder::step(Clock::time_point now) {
  if (!nextTime || now < *nextTime) {
    return std::nullopt;
  }
  nextTime = now + kStepTime;
  if (std::exchange(isTargetStep, false)) {
    return Step::kStopTarget;
  }
  if (signals == 1 && std::exchange(isProcessStep, false)) {
    return Step::kStopProcess;
  }
  if (signals++ < kMostSignals) {
    return Step::kSignal;
  }
  end();
  return Step::kAskUser;
}

}  // namespace gdb
