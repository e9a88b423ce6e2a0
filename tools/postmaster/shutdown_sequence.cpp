#include "postmaster/shutdown_sequence.h"

#include <algorithm>

namespace postmaster {

void ShutdownSequence::begin(TimePoint now) {
  phase = Phase::kAsked;
  due = now + kAnswerTime;
}

ShutdownSequence::Action ShutdownSequence::advance(TimePoint now, const Situation& situation) {
  const bool late = now >= due;
  if (phase == Phase::kIdle || phase == Phase::kFinished) {
    return Action::kNone;
  }
  const bool connectionsMatter = phase < Phase::kTerminated;
  if (!situation.processesLeft && !(connectionsMatter && situation.connectionsLeft)) {
    return enter(Phase::kFinished, now);
  }
  switch (phase) {
    case Phase::kAsked:
      return late || situation.allAnswered ? enter(Phase::kOrdered, now) : Action::kNone;
    case Phase::kOrdered:
      if (late && !hurried && situation.processesLeft && situation.allProcessesAnswered) {
        return enter(Phase::kWaiting, now);
      }
      return late ? enter(Phase::kTerminated, now) : Action::kNone;
    case Phase::kWaiting:
      return hurried || !situation.processesLeft || !situation.allProcessesAnswered
                 ? enter(Phase::kTerminated, now)
                 : Action::kNone;
    case Phase::kTerminated:
      return late ? enter(Phase::kKilled, now) : Action::kNone;
    default:
      return late ? enter(Phase::kFinished, now) : Action::kNone;
  }
}

ShutdownSequence::Action ShutdownSequence::enter(Phase next, TimePoint now) {
  phase = next;
  hurried = false;
  switch (next) {
    case Phase::kOrdered:
      due = now + kLeaveTime;
      return Action::kOrderSilentTools;
    case Phase::kWaiting:
      due = TimePoint::max();
      return Action::kTellOfWaiting;
    case Phase::kTerminated:
      due = now + kTerminateTime;
      return Action::kTerminate;
    case Phase::kKilled:
      due = now + kKillTime;
      return Action::kKill;
    default:
      return Action::kFinish;
  }
}

void ShutdownSequence::hasten(TimePoint now) {
  due = std::min(due, now);
  hurried = true;
}

std::optional<ShutdownSequence::TimePoint> ShutdownSequence::deadline() const {
  const bool isTimed = phase != Phase::kIdle && phase != Phase::kFinished;
  return isTimed && due != TimePoint::max() ? std::optional(due) : std::nullopt;
}

}  // namespace postmaster
