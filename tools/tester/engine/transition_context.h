#pragma once

#include <string>
#include <vector>

#include "tester/engine/runtime.h"

namespace tester {

/// What the body of a transition can do, in SDL's terms. One context lives for one transition; the
/// names it is given are those of the model, a wrong one is a fault of the model and has no effect.
class TransitionContext {
 public:
  /// `input` is the signal that was consumed; a start transition has one without a name.
  TransitionContext(Runtime& systemRuntime, ProcessInstance& owner, const QueuedSignal& input,
                    const TraceSink& sink);

  Time now() const { return runtime.now(); }
  const InstanceId& self() const { return instance.id; }
  const InstanceId& sender() const { return instance.sender; }
  const InstanceId& parent() const { return instance.parent; }
  const InstanceId& offspring() const { return instance.offspring; }

  /// The parameters of the consumed signal, from 0.
  std::int64_t integer(std::size_t index) const;
  bool boolean(std::size_t index) const;
  std::string literal(std::size_t index) const;

  std::int64_t integerVariable(const std::string& name) const;
  bool booleanVariable(const std::string& name) const;
  std::string literalVariable(const std::string& name) const;
  InstanceId pidVariable(const std::string& name) const;
  void assign(const std::string& name, Value value);
  /// Adds to an Integer variable; the sum stops at the limits of the sort.
  void add(const std::string& name, std::int64_t amount);

  void output(const std::string& signal, const InstanceId& receiver,
              std::vector<Value> parameters = {});
  /// Sends to every living instance of the process, in the order of their numbers.
  void outputToAll(const std::string& signal, const std::string& process,
                   const std::vector<Value>& parameters = {});
  void outputToEnvironment(const std::string& signal, const std::vector<Value>& parameters);

  void set(const std::string& timer, Time delay);
  void reset(const std::string& timer);

  /// Creates an instance and assigns its variables before its start; offspring() is null when the
  /// process has its maximum of instances.
  void create(const std::string& process, const std::vector<Variable>& actual);

  /// Without a call the instance stays in its state.
  void nextState(const std::string& state);
  void stop() { stopped = true; }

  const std::string& stateAfter() const { return newState; }
  /// The first dynamic error so far: an output to an instance that does not live.
  const Problem& dynamicError() const { return error; }
  bool hasStopped() const { return stopped; }
  /// Trace lines of the actions so far, as far as the sink wants them.
  const std::vector<std::string>& actions() const { return actionLines; }

 private:
  template <typename T>
  T parameter(std::size_t index) const;
  template <typename T>
  T variable(const std::string& name) const;
  void noteLost(const std::string& signal, const InstanceId& receiver);
  void note(TraceLevel level, const std::string& action);

  Runtime& runtime;
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
