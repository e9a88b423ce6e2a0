#include "tester/transition_context.h"

namespace tester {

TransitionContext::TransitionContext(SimulatedSystem& simulatedSystem, ProcessInstance& owner,
                                     const QueuedSignal& consumed, const Trace& trace)
    : system(simulatedSystem),
      instance(owner),
      input(consumed),
      notesSignals(trace.wants(TraceLevel::kSignals, owner.id.process)),
      notesDetails(trace.wants(TraceLevel::kDetails, owner.id.process)),
      newState(owner.state) {}

Value TransitionContext::parameter(std::size_t index) const {
  return index < input.parameters.size() ? input.parameters[index] : Value();
}

Value TransitionContext::variable(const std::string& name) const {
  const Value* value = instance.variable(name);
  return value == nullptr ? Value() : *value;
}

std::int64_t TransitionContext::integer(const std::string& name) const {
  return parseNumber(variable(name), INT64_MIN).value_or(0);
}

void TransitionContext::assign(const std::string& name, const Value& value) {
  if (Value* target = instance.variable(name)) {
    note(TraceLevel::kDetails, "task " + name + " := " + value);
    *target = value;
  }
}

void TransitionContext::add(const std::string& name, const Value& amount) {
  const std::int64_t added = parseNumber(amount, INT64_MIN).value_or(0);
  std::int64_t sum = 0;
  if (__builtin_add_overflow(integer(name), added, &sum)) {
    sum = added > 0 ? INT64_MAX : INT64_MIN;
  }
  assign(name, std::to_string(sum));
}

void TransitionContext::output(const std::string& signal, const InstanceId& receiver,
                               const std::vector<Value>& parameters) {
  const bool isDelivered = system.deliver(receiver, {signal, parameters, instance.id});
  note(TraceLevel::kSignals, "output " + signal + formatParameters(parameters) + " to " +
                                 formatInstance(receiver) +
                                 (isDelivered ? "" : ": lost, there is no such instance"));
  if (!isDelivered && !error) {
    error = "Signal " + signal + " is sent to " +
            (receiver.isNull() ? "null." : formatInstance(receiver) + ", which does not live.");
  }
}

void TransitionContext::outputToAll(const std::string& signal, const std::string& process,
                                    const std::vector<Value>& parameters) {
  for (const ProcessInstance* each : system.instances()) {
    if (each->id.process == process) {
      output(signal, each->id, parameters);
    }
  }
}

void TransitionContext::outputToEnvironment(const std::string& signal,
                                            const std::vector<Value>& parameters) {
  note(TraceLevel::kSignals, "output " + signal + formatParameters(parameters) + " to env");
}

void TransitionContext::set(const std::string& timer, Time delay) {
  system.setTimer(instance, timer, delay);
  note(TraceLevel::kDetails, "set " + timer + " to " + formatTime(system.now() + delay));
}

void TransitionContext::reset(const std::string& timer) {
  system.resetTimer(instance, timer);
  note(TraceLevel::kDetails, "reset " + timer);
}

void TransitionContext::create(const std::string& process, const std::string& variableName,
                               const Value& value) {
  instance.offspring = system.create(process, instance.id);
  ProcessInstance* created = system.find(instance.offspring);
  if (created == nullptr) {
    note(TraceLevel::kSignals, "create " + process + ": refused, no more instances allowed");
    return;
  }
  if (Value* target = created->variable(variableName)) {
    *target = value;
  }
  note(TraceLevel::kSignals, "create " + formatInstance(created->id));
}

void TransitionContext::note(TraceLevel level, const std::string& action) {
  if (level == TraceLevel::kDetails ? notesDetails : notesSignals) {
    actionLines.push_back(action);
  }
}

}  // namespace tester
