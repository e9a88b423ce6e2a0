#include "tester/engine/transition_context.h"

namespace tester {

TransitionContext::TransitionContext(Runtime& systemRuntime, ProcessInstance& owner,
                                     const QueuedSignal& consumed, const TraceSink& sink)
    : runtime(systemRuntime),
      instance(owner),
      input(consumed),
      notesSignals(sink.wants(TraceLevel::kSignals, owner.id.process)),
      notesDetails(sink.wants(TraceLevel::kDetails, owner.id.process)),
      newState(owner.state) {}

template <typename T>
T TransitionContext::parameter(std::size_t index) const {
  const T* value =
      index < input.parameters.size() ? std::get_if<T>(&input.parameters[index]) : nullptr;
  return value == nullptr ? T{} : *value;
}

template <typename T>
T TransitionContext::variable(const std::string& name) const {
  const Value* value = instance.variable(name);
  const T* content = value == nullptr ? nullptr : std::get_if<T>(value);
  return content == nullptr ? T{} : *content;
}

std::int64_t TransitionContext::integer(std::size_t index) const {
  return parameter<std::int64_t>(index);
}

bool TransitionContext::boolean(std::size_t index) const {
  return parameter<bool>(index);
}

std::string TransitionContext::literal(std::size_t index) const {
  return parameter<Literal>(index).name;
}

std::int64_t TransitionContext::integerVariable(const std::string& name) const {
  return variable<std::int64_t>(name);
}

bool TransitionContext::booleanVariable(const std::string& name) const {
  return variable<bool>(name);
}

std::string TransitionContext::literalVariable(const std::string& name) const {
  return variable<Literal>(name).name;
}

InstanceId TransitionContext::pidVariable(const std::string& name) const {
  return variable<InstanceId>(name);
}

void TransitionContext::assign(const std::string& name, Value value) {
  Value* target = instance.variable(name);
  if (target == nullptr) {
    return;
  }
  if (notesDetails) {
    note(TraceLevel::kDetails, "task " + name + " := " + formatValue(value));
  }
  *target = std::move(value);
}

void TransitionContext::add(const std::string& name, std::int64_t amount) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(integerVariable(name), amount, &sum)) {
    sum = amount > 0 ? INT64_MAX : INT64_MIN;
  }
  assign(name, sum);
}

void TransitionContext::output(const std::string& signal, const InstanceId& receiver,
                               std::vector<Value> parameters) {
  std::string action;
  if (notesSignals) {
    action = "output " + signal + formatParameters(parameters) + " to " + formatInstance(receiver);
  }
  QueuedSignal sent;
  sent.name = signal;
  sent.parameters = std::move(parameters);
  sent.sender = instance.id;
  if (!runtime.deliver(receiver, std::move(sent))) {
    action += ": lost, there is no such instance";
    noteLost(signal, receiver);
  }
  note(TraceLevel::kSignals, action);
}

void TransitionContext::noteLost(const std::string& signal, const InstanceId& receiver) {
  if (error) {
    return;
  }
  error = "Signal " + signal + " is sent to " +
          (receiver.isNull() ? "null." : formatInstance(receiver) + ", which does not live.");
}

void TransitionContext::outputToAll(const std::string& signal, const std::string& process,
                                    const std::vector<Value>& parameters) {
  for (const auto& byNumber : runtime.instances()) {
    for (const auto& [number, each] : byNumber) {
      if (each.id.process == process) {
        output(signal, each.id, parameters);
      }
    }
  }
}

void TransitionContext::outputToEnvironment(const std::string& signal,
                                            const std::vector<Value>& parameters) {
  if (notesSignals) {
    note(TraceLevel::kSignals, "output " + signal + formatParameters(parameters) + " to env");
  }
}

void TransitionContext::set(const std::string& timer, Time delay) {
  runtime.setTimer(instance, timer, delay);
  if (notesDetails) {
    note(TraceLevel::kDetails, "set " + timer + " to " + formatTime(addTime(now(), delay)));
  }
}

void TransitionContext::reset(const std::string& timer) {
  runtime.resetTimer(instance, timer);
  note(TraceLevel::kDetails, "reset " + timer);
}

void TransitionContext::create(const std::string& process, const std::vector<Variable>& actual) {
  instance.offspring = runtime.create(process, instance.id);
  ProcessInstance* created = runtime.find(instance.offspring);
  if (created == nullptr) {
    note(TraceLevel::kSignals, "create " + process + ": refused, no more instances allowed");
    return;
  }
  for (const Variable& given : actual) {
    if (Value* target = created->variable(given.name)) {
      *target = given.value;
    }
  }
  note(TraceLevel::kSignals, "create " + formatInstance(created->id));
}

void TransitionContext::nextState(const std::string& state) {
  newState = state;
}

void TransitionContext::note(TraceLevel level, const std::string& action) {
  if (level == TraceLevel::kDetails ? notesDetails : notesSignals) {
    actionLines.push_back(action);
  }
}

}  // namespace tester
