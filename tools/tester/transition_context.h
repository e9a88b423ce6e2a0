#pragma once

#include <string>
#include <vector>

#include "tester/simulated_system.h"

namespace tester {

/// What the body of a transition can do, in SDL's terms. One context lives for one transition; the
/// names it is given are those of the model, a wrong one is a fault of the model and has no effect.
class TransitionContext {
 public:
  /// `consumed` is the signal that was consumed; a start transition has one without a name.
  TransitionContext(SimulatedSystem& simulatedSystem, ProcessInstance& owner,
                    const QueuedSignal& consumed, const Trace& trace);

  const InstanceId& sender() const { return instance.sender; }
  const InstanceId& parent() const { return instance.parent; }
  const InstanceId& offspring() const { return instance.offspring; }
  /// The instance's own number, as a value.
  Value number() const { return std::to_string(instance.id.number); }

  /// A parameter of the consumed signal, from 0; empty when it has none.
  Value parameter(std::size_t index) const;
  /// Empty when there is no such variable.
  Value variable(const std::string& name) const;
  std::int64_t integer(const std::string& name) const;
  bool isTrue(const std::string& name) const { return variable(name) == "true"; }

  void assign(const std::string& name, const Value& value);
  /// Adds to an Integer variable; the sum stops at the limits of the sort.
  void add(const std::string& name, const Value& amount);

  void output(const std::string& signal, const InstanceId& receiver,
              const std::vector<Value>& parameters = {});
  /// Sends to every living instance of the process, in the order of their numbers.
  void outputToAll(const std::string& signal, const std::string& process,
                   const std::vector<Value>& parameters = {});
  void outputToEnvironment(const std::string& signal, const std::vector<Value>& parameters);

  void set(const std::string& timer, Time delay);
  void reset(const std::string& timer);

  /// Creates an instance and assigns one of its variables before its start; offspring() is null
  /// when the process has its maximum of instances.
  void create(const std::string& process, const std::string& variableName, const Value& value);

  /// Without a call the instance stays in its state.
  void nextState(const std::string& state) { newState = state; }
  void stop() { stopped = true; }

  const std::string& stateAfter() const { return newState; }
  /// The first dynamic error so far: an output to an instance that does not live.
  const Problem& dynamicError() const { return error; }
  bool hasStopped() const { return stopped; }
  /// Trace lines of the actions so far, as far as they are wanted.
  const std::vector<std::string>& actions() const { return actionLines; }

 private:
  void note(TraceLevel level, const std::string& action);

  SimulatedSystem& system;
  ProcessInstance& instance;
  const QueuedSignal& input;
  bool notesSignals;
  bool notesDetails;
  std::string newState;
  bool stopped = false;
  Problem error;
  std::vector<std::string> actionLines;
};

}  // namespace tester
