#pragma once

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "tester/engine/system_model.h"
#include "tester/engine/timer_list.h"

namespace tester {

/// A living process instance with its input queue. Variables stand in the order of the type's.
struct ProcessInstance {
  InstanceId id;
  const ProcessType* type = nullptr;
  std::string state = kStartState;
  std::vector<Value> variables;
  std::deque<QueuedSignal> queue;
  InstanceId parent;
  InstanceId offspring;
  InstanceId sender;
  bool isReady = false;   ///< stands in the runtime's ready queue
  bool isFiring = false;  ///< its transition runs; it becomes ready again only after that

  bool hasStarted() const { return state != kStartState; }
  /// The variable of that name; null for an unknown one.
  Value* variable(const std::string& name);
};

/// Whether the type's `state` keeps `input` in the queue.
bool saves(const ProcessType& type, const std::string& state, const std::string& input);

/// The row for `input` in `state`, that of the state itself before that of any state; null when
/// the input is discarded there.
const TransitionRow* findTransition(const ProcessType& type, const std::string& state,
                                    const std::string& input);

/// The moving parts of a simulated system: instances, queues, timers, virtual time and the ready
/// queue. An instance stands in the ready queue, once, when it has a transition to make: it is new,
/// or its queue holds a signal that its state does not save. First ready, first served.
class Runtime {
 public:
  /// `systemModel` must outlive the runtime.
  explicit Runtime(const SystemModel& systemModel);

  Time now() const { return time; }
  void setNow(Time newTime) { time = newTime; }

  /// The living instances of each type, by number, in the order of the model's types.
  const std::vector<std::map<int, ProcessInstance>>& instances() const { return population; }
  ProcessInstance* find(const InstanceId& id);
  const ProcessInstance* find(const InstanceId& id) const;
  const std::deque<InstanceId>& readyQueue() const { return ready; }
  const TimerList& timers() const { return activeTimers; }

  /// Creates an instance; the null id when the type is unknown or has its maximum of instances.
  InstanceId create(const std::string& process, const InstanceId& parent);

  /// Ends an instance: its queue is dropped and its timers are stopped.
  void remove(const InstanceId& id);

  /// Appends a signal to the receiver's queue; false when there is no such instance.
  bool deliver(const InstanceId& receiver, QueuedSignal signal);

  /// Sets a timer to `delay` from now; one that is active, or whose signal waits in the queue,
  /// is reset first.
  void setTimer(ProcessInstance& owner, const std::string& timer, Time delay);

  /// False when the timer was neither active nor in the queue.
  bool resetTimer(ProcessInstance& owner, const std::string& timer);

  /// Delivers the signals of all timers that are due; when that makes nothing ready, goes on in
  /// time to the next timers up to `limit`.
  void advance(Time limit);

  /// Takes the first of the ready queue for firing; null when there is none.
  ProcessInstance* takeReady();

  /// Puts the instance into the ready queue or takes it out, as its queue and state demand.
  void updateReady(ProcessInstance& instance);

 private:
  void deliverDueTimers();

  const SystemModel& model;
  Time time = 0;
  std::vector<std::map<int, ProcessInstance>> population;
  std::vector<int> lastNumbers;  ///< last instance number given, by type; numbers are not reused
  std::deque<InstanceId> ready;
  TimerList activeTimers;
};

}  // namespace tester
