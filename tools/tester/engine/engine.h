#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "tester/engine/value.h"

/// The system under test as the commands see it. The commands know nothing of how it is made, so
/// an engine for another system, or for a system on a real target, can take its place.
namespace tester {

/// Why a request was refused, one sentence for the user; nothing when it was carried out.
using Problem = std::optional<std::string>;

struct SignalType {
  std::string name;
  std::vector<Sort> parameters = {};
};

struct ProcessInfo {
  std::string name;
  int initialInstances = 0;
  int maximumInstances = 0;
  int liveInstances = 0;
  std::vector<std::string> states;
  std::vector<std::string> timers;
  std::vector<std::string> inputs;  ///< signals and timers with a transition or a save
};

struct Variable {
  std::string name;
  Sort sort;
  Value value;
};

struct InstanceInfo {
  InstanceId id;
  std::string state;  ///< kStartState before its start transition
  std::size_t queueLength = 0;
  InstanceId parent;
  InstanceId offspring;
  InstanceId sender;
  std::vector<Variable> variables;
};

struct QueuedSignal {
  std::string name;
  std::vector<Value> parameters;
  InstanceId sender;  ///< null for the environment and for a timer
  bool isTimer = false;
  bool isSaved = false;  ///< the owner's present state saves it
};

struct TimerInfo {
  InstanceId owner;
  std::string name;
  Time expiry = 0;
};

inline constexpr char kStartState[] = "start";

/// A transition that is about to be fired.
struct PendingTransition {
  InstanceId instance;
  std::string state;
  std::string input;  ///< signal or timer; empty for a start transition

  bool operator==(const PendingTransition&) const = default;
};

/// What became of a transition.
struct FiredTransition {
  std::string outcome;  ///< "-> Idle", "-> stop" or "discarded"
  Problem error = {};   ///< the first dynamic error in it; it went on to its end all the same
};

/// How much a trace line tells; a level includes those before it.
enum class TraceLevel : int {
  kNone = 0,
  kTransitions = 1,  ///< one line a transition
  kSignals = 2,      ///< and what it sends and creates
  kDetails = 3,      ///< and its timers and assignments
};

/// Receives what an engine tells about the transitions it fires.
class TraceSink {
 public:
  virtual ~TraceSink() = default;

  /// Whether a line of `level` about an instance of `process` would be kept; an engine may save
  /// itself the making of others.
  virtual bool wants(TraceLevel level, const std::string& process) const = 0;

  /// One line without its end.
  virtual void trace(const std::string& line) = 0;
};

class Engine {
 public:
  virtual ~Engine() = default;

  virtual std::string systemName() const = 0;
  virtual std::string description() const = 0;
  virtual Time now() const = 0;

  virtual std::vector<ProcessInfo> processes() const = 0;
  virtual std::vector<SignalType> signalTypes() const = 0;

  /// Living instances, in the order of processes() and of their numbers.
  virtual std::vector<InstanceInfo> instances() const = 0;
  virtual std::optional<InstanceInfo> instance(const InstanceId& id) const = 0;

  /// The input queue of an instance, oldest first; empty for an unknown instance.
  virtual std::vector<QueuedSignal> queue(const InstanceId& id) const = 0;

  /// Active timers in the order in which they will expire.
  virtual std::vector<TimerInfo> timers() const = 0;

  /// The transitions that could be fired at the present time, in their order.
  virtual std::vector<PendingTransition> ready() const = 0;

  /// The next transition. When none is ready, time goes on to the next timer that expires up to
  /// `limit`. Nothing when there is no such timer; time stands still then.
  virtual std::optional<PendingTransition> prepare(Time limit) = 0;

  /// Fires the transition that prepare() named; does nothing when none is ready.
  virtual FiredTransition fire(TraceSink& sink) = 0;

  /// Moves time on to `time`, which no active timer and no ready transition may precede.
  virtual void passTime(Time time) = 0;

  /// Puts a signal from the environment into an instance's queue.
  virtual Problem send(const std::string& signal, const InstanceId& receiver,
                       std::vector<Value> parameters) = 0;

  virtual Problem setTimer(const InstanceId& owner, const std::string& timer, Time delay) = 0;

  /// Stops a timer, or takes its signal out of the owner's queue when it has expired.
  virtual Problem resetTimer(const InstanceId& owner, const std::string& timer) = 0;

  virtual Problem assign(const InstanceId& owner, const std::string& variable, Value value) = 0;

  /// Begins the run of the system anew.
  virtual void restart() = 0;
};

}  // namespace tester
