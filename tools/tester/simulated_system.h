#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tester/system_model.h"

namespace tester {

/// A dynamic error, one sentence for the user.
using Problem = std::optional<std::string>;

struct QueuedSignal {
  std::string name;
  std::vector<Value> parameters = {};
  InstanceId sender = {};  ///< null for the environment and for a timer
  bool isTimer = false;
};

/// A living process instance with its input queue. Variables stand in the order of the type's.
struct ProcessInstance {
  InstanceId id;
  const ProcessType* type = nullptr;
  std::string state = kStartState;
  std::vector<Value> variables = {};
  std::deque<QueuedSignal> queue = {};
  InstanceId parent = {};
  InstanceId offspring = {};
  InstanceId sender = {};
  bool isReady = false;   ///< stands in the ready queue
  bool isFiring = false;  ///< its transition runs; it becomes ready again only after that

  bool hasStarted() const { return state != kStartState; }
  /// The variable of that name; null for an unknown one.
  Value* variable(const std::string& name);
};

struct TimerInfo {
  InstanceId owner;
  std::string name;
  Time expiry = 0;
};

/// A transition that is about to be fired.
struct PendingTransition {
  InstanceId instance;
  std::string state;
  std::string input;  ///< signal or timer; empty for a start transition

  bool operator==(const PendingTransition&) const = default;
};

/// How much a trace tells; a level includes those before it.
enum class TraceLevel : int {
  kNone = 0,
  kTransitions = 1,  ///< one line a transition
  kSignals = 2,      ///< and what it sends and creates
  kDetails = 3,      ///< and its timers and assignments
};

/// What a trace tells, and of which processes: of all without a mask.
struct Trace {
  TraceLevel level = TraceLevel::kTransitions;
  std::optional<std::set<std::string>> mask = {};

  bool wants(TraceLevel wanted, const std::string& process) const {
    return wanted <= level && (!mask || mask->contains(process));
  }
};

/// What became of a transition.
struct FiredTransition {
  std::string trace;   ///< lines, each with its end
  Problem error = {};  ///< the first dynamic error in it; it went on to its end all the same
};

/// Runs a model in virtual time. Deterministic: the same requests give the same transitions,
/// whatever the clock says. An instance stands in the ready queue, once, when it has a transition
/// to make: it is new, or its queue holds a signal that its state does not save. First ready, first
/// served.
class SimulatedSystem {
 public:
  explicit SimulatedSystem(SystemModel systemModel);
  SimulatedSystem(const SimulatedSystem&) = delete;
  SimulatedSystem& operator=(const SimulatedSystem&) = delete;

  const SystemModel& definition() const { return model; }
  Time now() const { return time; }

  /// Living instances, in the order of the model's types and of their numbers. Valid until one is
  /// created or ends.
  std::vector<const ProcessInstance*> instances() const;
  /// Null when it does not live.
  const ProcessInstance* find(const InstanceId& id) const;
  ProcessInstance* find(const InstanceId& id);

  /// Active timers in the order in which they will expire; those of one time as they were set.
  const std::vector<TimerInfo>& timers() const { return activeTimers; }

  /// The transitions that could be fired at the present time, in their order.
  std::vector<PendingTransition> ready() const;

  /// The next transition. When none is ready, time goes on to the next timer that expires up to
  /// `limit`. Nothing when there is no such timer; time stands still then.
  std::optional<PendingTransition> prepare(Time limit);

  /// Fires the transition that prepare() named; does nothing when none is ready.
  FiredTransition fire(const Trace& trace);

  /// Moves time on to `newTime`, which no active timer and no ready transition may precede.
  void passTime(Time newTime);

  /// Begins the run of the system anew.
  void restart();

  // What transitions and the user do. Names and values have been checked.

  /// Appends a signal to the receiver's queue; false when there is no such instance.
  bool deliver(const InstanceId& receiver, QueuedSignal signal);
  /// Creates an instance; the null id when the type is unknown or has its maximum of instances.
  InstanceId create(const std::string& process, const InstanceId& parent);
  /// Sets a timer to `delay` from now; one that is active, or whose signal waits in the queue, is
  /// reset first.
  void setTimer(ProcessInstance& owner, const std::string& timer, Time delay);
  void resetTimer(ProcessInstance& owner, const std::string& timer);

 private:
  void remove(const InstanceId& id);
  void deliverDueTimers();
  void updateReady(ProcessInstance& instance);
  PendingTransition pending(const InstanceId& id) const;

  const SystemModel model;
  Time time = 0;
  std::vector<std::map<int, ProcessInstance>> population;  ///< of each type, by number
  std::vector<int> lastNumbers;  ///< last instance number given, by type; numbers are not reused
  std::deque<InstanceId> readyQueue;
  std::vector<TimerInfo> activeTimers;
};

}  // namespace tester
