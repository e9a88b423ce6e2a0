#pragma once

#include <chrono>
#include <optional>

namespace postmaster {

/// The steps of an orderly end and when each is due, free of any clock: tools are asked to leave
/// (13000), those that do not answer are ordered to (13001), and processes that stay are sent
/// SIGTERM and in the end SIGKILL. It is over as soon as nothing is left; once processes are being
/// terminated, a connection alone is nothing to wait for. Processes that have answered are not
/// terminated: they may have a question for their user, and he has all the time he wants until
/// someone is out of patience.
class ShutdownSequence {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  /// How long tools have to answer 13000, then to end, then to end after SIGTERM, and how long a
  /// killed process is waited for.
  static constexpr std::chrono::milliseconds kAnswerTime{1000};
  static constexpr std::chrono::milliseconds kLeaveTime{2000};
  static constexpr std::chrono::milliseconds kTerminateTime{1000};
  static constexpr std::chrono::milliseconds kKillTime{2000};

  /// What is to be done now.
  enum class Action { kNone, kOrderSilentTools, kTellOfWaiting, kTerminate, kKill, kFinish };

  struct Situation {
    bool allAnswered = false;
    bool processesLeft = false;
    bool allProcessesAnswered = false;  ///< those that are left
    bool connectionsLeft = false;
  };

  /// The tools were asked at `now`.
  void begin(TimePoint now);
  bool isRunning() const { return phase != Phase::kIdle; }

  /// The step that is due; each comes once. Call until it gives kNone.
  Action advance(TimePoint now, const Situation& situation);

  /// Makes the next step due at once: someone is out of patience.
  void hasten(TimePoint now);

  /// When the next step is due by time alone; nothing while idle.
  std::optional<TimePoint> deadline() const;

 private:
  enum class Phase { kIdle, kAsked, kOrdered, kWaiting, kTerminated, kKilled, kFinished };

  Action enter(Phase next, TimePoint now);

  Phase phase = Phase::kIdle;
  TimePoint due{};
  bool hurried = false;  ///< the present step is due since someone is out of patience
};

}  // namespace postmaster
