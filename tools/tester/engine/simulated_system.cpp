#include "tester/engine/simulated_system.h"

#include <algorithm>

#include "tester/engine/transition_context.h"

namespace tester {

namespace {

/// Width of the time in a trace line; the lines of the actions are indented behind it.
// Columns of the trace.
constexpr std::size_t kTimeWidth = 11;
constexpr std::size_t kInstanceWidth = 17;
constexpr std::size_t kInputWidth = 28;

constexpr char kDiscarded[] = "discarded";

/// Index of the first signal that the state does not save; the queue's size when there is none.
std::size_t firstInput(const ProcessInstance& instance) {
  std::size_t index = 0;
  while (index < instance.queue.size() &&
         saves(*instance.type, instance.state, instance.queue[index].name)) {
    ++index;
  }
  return index;
}

InstanceInfo describe(const ProcessInstance& instance) {
  InstanceInfo info{instance.id,
                    instance.state,
                    instance.queue.size(),
                    instance.parent,
                    instance.offspring,
                    instance.sender,
                    {}};
  info.variables = instance.type->variables;
  for (std::size_t i = 0; i < info.variables.size(); ++i) {
    info.variables[i].value = instance.variables[i];
  }
  return info;
}

ProcessInfo describe(const ProcessType& type, std::size_t liveInstances) {
  ProcessInfo info{type.name,
                   type.initialInstances,
                   type.maximumInstances,
                   static_cast<int>(liveInstances),
                   type.states,
                   type.timers,
                   {}};
  const auto addInput = [&](const std::string& input) {
    if (std::find(info.inputs.begin(), info.inputs.end(), input) == info.inputs.end()) {
      info.inputs.push_back(input);
    }
  };
  for (const TransitionRow& row : type.transitions) {
    addInput(row.input);
  }
  for (const SaveRow& row : type.saves) {
    addInput(row.input);
  }
  return info;
}

Problem noInstance(const InstanceId& id) {
  return "There is no instance " + formatInstance(id) + '.';
}

Problem checkTimer(const ProcessInstance* owner, const InstanceId& id, const std::string& timer) {
  if (owner == nullptr) {
    return noInstance(id);
  }
  const auto& timers = owner->type->timers;
  if (std::find(timers.begin(), timers.end(), timer) == timers.end()) {
    return "Process " + id.process + " has no timer " + timer + '.';
  }
  return std::nullopt;
}

Problem checkParameters(const SignalType& type, const std::vector<Value>& parameters) {
  if (parameters.size() != type.parameters.size()) {
    return "Signal " + type.name + " has " + std::to_string(type.parameters.size()) +
           " parameters, not " + std::to_string(parameters.size()) + '.';
  }
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    if (!isOfSort(parameters[i], type.parameters[i])) {
      return "Parameter " + std::to_string(i + 1) + " of signal " + type.name + " is no " +
             type.parameters[i].name + '.';
    }
  }
  return std::nullopt;
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
}

/// "     12.500  Button:1           Idle: Press(1)               -> Lit", and the actions indented
/// below.
void traceTransition(TraceSink& sink, Time time, const ProcessInstance& instance,
                     const QueuedSignal& input, const std::string& outcome,
                     const std::vector<std::string>& actions) {
  if (!sink.wants(TraceLevel::kTransitions, instance.id.process)) {
    return;
  }
  std::string stamp = formatTime(time);
  stamp.insert(0, kTimeWidth - std::min(kTimeWidth, stamp.size()), ' ');
  const std::string consumed =
      input.name.empty() ? "" : ": " + input.name + formatParameters(input.parameters);
  sink.trace(stamp + "  " + padded(formatInstance(instance.id), kInstanceWidth) + "  " +
             padded(instance.state + consumed, kInputWidth) + ' ' + outcome);
  for (const std::string& action : actions) {
    sink.trace(std::string(kTimeWidth + 4, ' ') + action);
  }
}

}  // namespace

SimulatedSystem::SimulatedSystem(SystemModel systemModel) : model(std::move(systemModel)) {
  restart();
}

void SimulatedSystem::restart() {
  runtime = std::make_unique<Runtime>(model);
}

std::vector<ProcessInfo> SimulatedSystem::processes() const {
  std::vector<ProcessInfo> infos;
  for (std::size_t i = 0; i < model.processes.size(); ++i) {
    infos.push_back(describe(model.processes[i], runtime->instances()[i].size()));
  }
  return infos;
}

std::vector<InstanceInfo> SimulatedSystem::instances() const {
  std::vector<InstanceInfo> infos;
  for (const auto& byNumber : runtime->instances()) {
    for (const auto& [number, each] : byNumber) {
      infos.push_back(describe(each));
    }
  }
  return infos;
}

std::optional<InstanceInfo> SimulatedSystem::instance(const InstanceId& id) const {
  const ProcessInstance* found = runtime->find(id);
  return found == nullptr ? std::nullopt : std::optional(describe(*found));
}

std::vector<QueuedSignal> SimulatedSystem::queue(const InstanceId& id) const {
  const ProcessInstance* found = runtime->find(id);
  if (found == nullptr) {
    return {};
  }
  std::vector<QueuedSignal> signals(found->queue.begin(), found->queue.end());
  for (QueuedSignal& signal : signals) {
    signal.isSaved = saves(*found->type, found->state, signal.name);
  }
  return signals;
}

PendingTransition SimulatedSystem::pending(const InstanceId& id) const {
  const ProcessInstance* found = runtime->find(id);
  if (found == nullptr) {
    return {};
  }
  if (!found->hasStarted()) {
    return {id, found->state, ""};
  }
  return {id, found->state, found->queue[firstInput(*found)].name};
}

std::vector<PendingTransition> SimulatedSystem::ready() const {
  std::vector<PendingTransition> transitions;
  for (const InstanceId& id : runtime->readyQueue()) {
    transitions.push_back(pending(id));
  }
  return transitions;
}

std::optional<PendingTransition> SimulatedSystem::prepare(Time limit) {
  runtime->advance(limit);
  if (runtime->readyQueue().empty()) {
    return std::nullopt;
  }
  return pending(runtime->readyQueue().front());
}

FiredTransition SimulatedSystem::fire(TraceSink& sink) {
  ProcessInstance* instance = runtime->takeReady();
  if (instance == nullptr) {
    return {};
  }
  QueuedSignal input;
  TransitionBody body = instance->type->start;
  if (instance->hasStarted()) {
    const auto taken = instance->queue.begin() + static_cast<std::ptrdiff_t>(firstInput(*instance));
    input = std::move(*taken);
    instance->queue.erase(taken);
    const TransitionRow* row = findTransition(*instance->type, instance->state, input.name);
    body = row == nullptr ? nullptr : row->body;
    instance->sender = input.isTimer ? instance->id : input.sender;
  }
  if (body == nullptr) {
    traceTransition(sink, now(), *instance, input, kDiscarded, {});
    runtime->updateReady(*instance);
    return {kDiscarded};
  }
  TransitionContext context(*runtime, *instance, input, sink);
  instance->isFiring = true;
  body(context);
  instance->isFiring = false;
  const std::string outcome = "-> " + (context.hasStopped() ? "stop" : context.stateAfter());
  traceTransition(sink, now(), *instance, input, outcome, context.actions());
  if (context.hasStopped()) {
    runtime->remove(instance->id);
    return {outcome, context.dynamicError()};
  }
  instance->state = context.stateAfter();
  runtime->updateReady(*instance);
  return {outcome, context.dynamicError()};
}

void SimulatedSystem::passTime(Time time) {
  runtime->setNow(std::max(now(), time));
}

Problem SimulatedSystem::send(const std::string& signal, const InstanceId& receiver,
                              std::vector<Value> parameters) {
  const auto type = std::find_if(model.signalTypes.begin(), model.signalTypes.end(),
                                 [&](const SignalType& each) { return each.name == signal; });
  if (type == model.signalTypes.end()) {
    return "There is no signal " + signal + '.';
  }
  if (Problem problem = checkParameters(*type, parameters)) {
    return problem;
  }
  QueuedSignal sent;
  sent.name = signal;
  sent.parameters = std::move(parameters);
  if (!runtime->deliver(receiver, std::move(sent))) {
    return noInstance(receiver);
  }
  return std::nullopt;
}

Problem SimulatedSystem::setTimer(const InstanceId& owner, const std::string& timer, Time delay) {
  ProcessInstance* instance = runtime->find(owner);
  if (Problem problem = checkTimer(instance, owner, timer)) {
    return problem;
  }
  runtime->setTimer(*instance, timer, delay);
  return std::nullopt;
}

Problem SimulatedSystem::resetTimer(const InstanceId& owner, const std::string& timer) {
  ProcessInstance* instance = runtime->find(owner);
  if (Problem problem = checkTimer(instance, owner, timer)) {
    return problem;
  }
  if (!runtime->resetTimer(*instance, timer)) {
    return "Timer " + timer + " of " + formatInstance(owner) + " is not active.";
  }
  return std::nullopt;
}

Problem SimulatedSystem::assign(const InstanceId& owner, const std::string& variable, Value value) {
  ProcessInstance* instance = runtime->find(owner);
  if (instance == nullptr) {
    return noInstance(owner);
  }
  Value* target = instance->variable(variable);
  if (target == nullptr) {
    return "Process " + owner.process + " has no variable " + variable + '.';
  }
  const auto index = static_cast<std::size_t>(target - instance->variables.data());
  const Sort& sort = instance->type->variables[index].sort;
  if (!isOfSort(value, sort)) {
    return "Variable " + variable + " is of the sort " + sort.name + '.';
  }
  *target = std::move(value);
  return std::nullopt;
}

}  // namespace tester
