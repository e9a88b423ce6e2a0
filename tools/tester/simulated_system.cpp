#include "tester/simulated_system.h"

#include <algorithm>
#include <utility>

#include "tester/transition_context.h"

namespace tester {

namespace {

// Columns of the trace; the lines of the actions are indented behind the time.
constexpr std::size_t kTimeWidth = 11;
constexpr std::size_t kInstanceWidth = 17;
constexpr std::size_t kInputWidth = 28;

/// Index of the first signal that the state does not save; the queue's size when there is none.
std::size_t firstInput(const ProcessInstance& instance) {
  const auto taken =
      std::find_if(instance.queue.begin(), instance.queue.end(), [&](const QueuedSignal& signal) {
        return !instance.type->keeps(instance.state, signal.name);
      });
  return static_cast<std::size_t>(taken - instance.queue.begin());
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(width, text.size()), ' ');
  return text;
}

/// "     12.500  Button:1           Idle: Press(1)               -> Lit", and the actions indented
/// below.
std::string traceText(const Trace& trace, Time time, const ProcessInstance& instance,
                      const QueuedSignal& input, const std::string& outcome,
                      const std::vector<std::string>& actions) {
  if (!trace.wants(TraceLevel::kTransitions, instance.id.process)) {
    return "";
  }
  const std::string stamp = formatTime(time);
  const std::string consumed =
      input.name.empty() ? "" : ": " + input.name + formatParameters(input.parameters);
  std::string lines = std::string(kTimeWidth - std::min(kTimeWidth, stamp.size()), ' ') + stamp +
                      "  " + padded(formatInstance(instance.id), kInstanceWidth) + "  " +
                      padded(instance.state + consumed, kInputWidth) + ' ' + outcome + '\n';
  for (const std::string& action : actions) {
    lines += std::string(kTimeWidth + 4, ' ') + action + '\n';
  }
  return lines;
}

}  // namespace

std::vector<std::string> ProcessType::inputs() const {
  std::vector<std::string> found;
  const auto add = [&found](const std::string& input) {
    if (std::find(found.begin(), found.end(), input) == found.end()) {
      found.push_back(input);
    }
  };
  for (const TransitionRow& row : transitions) {
    add(row.input);
  }
  for (const SaveRow& row : saves) {
    add(row.input);
  }
  return found;
}

bool ProcessType::keeps(const std::string& state, const std::string& input) const {
  return std::any_of(saves.begin(), saves.end(),
                     [&](const SaveRow& row) { return row.state == state && row.input == input; });
}

TransitionBody ProcessType::body(const std::string& state, const std::string& input) const {
  TransitionBody general = nullptr;
  for (const TransitionRow& row : transitions) {
    if (row.input == input && row.state == state) {
      return row.body;
    }
    if (row.input == input && row.state == kAnyState) {
      general = row.body;
    }
  }
  return general;
}

Value* ProcessInstance::variable(const std::string& name) {
  for (std::size_t i = 0; i < variables.size(); ++i) {
    if (type->variables[i].name == name) {
      return &variables[i];
    }
  }
  return nullptr;
}

SimulatedSystem::SimulatedSystem(SystemModel systemModel) : model(std::move(systemModel)) {
  restart();
}

void SimulatedSystem::restart() {
  time = 0;
  population.assign(model.processes.size(), {});
  lastNumbers.assign(model.processes.size(), 0);
  readyQueue.clear();
  activeTimers.clear();
  for (const ProcessType& type : model.processes) {
    for (int i = 0; i < type.initialInstances; ++i) {
      create(type.name, {});
    }
  }
}

std::vector<const ProcessInstance*> SimulatedSystem::instances() const {
  std::vector<const ProcessInstance*> all;
  for (const auto& byNumber : population) {
    for (const auto& [number, instance] : byNumber) {
      all.push_back(&instance);
    }
  }
  return all;
}

const ProcessInstance* SimulatedSystem::find(const InstanceId& id) const {
  for (std::size_t i = 0; i < population.size(); ++i) {
    if (model.processes[i].name == id.process) {
      const auto found = population[i].find(id.number);
      return found == population[i].end() ? nullptr : &found->second;
    }
  }
  return nullptr;
}

ProcessInstance* SimulatedSystem::find(const InstanceId& id) {
  return const_cast<ProcessInstance*>(std::as_const(*this).find(id));
}

PendingTransition SimulatedSystem::pending(const InstanceId& id) const {
  const ProcessInstance* found = find(id);
  if (found == nullptr || !found->hasStarted()) {
    return {id, kStartState, ""};
  }
  return {id, found->state, found->queue[firstInput(*found)].name};
}

std::vector<PendingTransition> SimulatedSystem::ready() const {
  std::vector<PendingTransition> transitions;
  for (const InstanceId& id : readyQueue) {
    transitions.push_back(pending(id));
  }
  return transitions;
}

std::optional<PendingTransition> SimulatedSystem::prepare(Time limit) {
  deliverDueTimers();
  while (readyQueue.empty() && !activeTimers.empty() && activeTimers.front().expiry <= limit) {
    time = activeTimers.front().expiry;
    deliverDueTimers();
  }
  return readyQueue.empty() ? std::nullopt : std::optional(pending(readyQueue.front()));
}

FiredTransition SimulatedSystem::fire(const Trace& trace) {
  if (readyQueue.empty()) {
    return {};
  }
  ProcessInstance& instance = *find(readyQueue.front());
  readyQueue.pop_front();
  instance.isReady = false;
  QueuedSignal input;
  TransitionBody body = instance.type->start;
  if (instance.hasStarted()) {
    const auto taken = instance.queue.begin() + static_cast<std::ptrdiff_t>(firstInput(instance));
    input = std::move(*taken);
    instance.queue.erase(taken);
    body = instance.type->body(instance.state, input.name);
    instance.sender = input.isTimer ? instance.id : input.sender;
  }
  TransitionContext context(*this, instance, input, trace);
  if (body != nullptr) {
    instance.isFiring = true;
    body(context);
    instance.isFiring = false;
  }
  const std::string outcome = body == nullptr
                                  ? "discarded"
                                  : "-> " + (context.hasStopped() ? "stop" : context.stateAfter());
  FiredTransition fired{traceText(trace, time, instance, input, outcome, context.actions()),
                        context.dynamicError()};
  if (context.hasStopped()) {
    remove(InstanceId(instance.id));
  } else {
    instance.state = context.stateAfter();
    updateReady(instance);
  }
  return fired;
}

void SimulatedSystem::passTime(Time newTime) {
  time = std::max(time, newTime);
}

bool SimulatedSystem::deliver(const InstanceId& receiver, QueuedSignal signal) {
  ProcessInstance* instance = find(receiver);
  if (instance == nullptr) {
    return false;
  }
  instance->queue.push_back(std::move(signal));
  updateReady(*instance);
  return true;
}

InstanceId SimulatedSystem::create(const std::string& process, const InstanceId& parent) {
  for (std::size_t i = 0; i < population.size(); ++i) {
    const ProcessType& type = model.processes[i];
    if (type.name != process ||
        population[i].size() >= static_cast<std::size_t>(type.maximumInstances)) {
      continue;
    }
    const int number = ++lastNumbers[i];
    ProcessInstance& instance = population[i][number];
    instance.id = {process, number};
    instance.type = &type;
    instance.parent = parent;
    for (const Variable& variable : type.variables) {
      instance.variables.push_back(variable.value);
    }
    updateReady(instance);
    return instance.id;
  }
  return {};
}

/// Its queue is dropped and its timers are stopped.
void SimulatedSystem::remove(const InstanceId& id) {
  std::erase_if(activeTimers, [&](const TimerInfo& timer) { return timer.owner == id; });
  std::erase(readyQueue, id);
  for (std::size_t i = 0; i < population.size(); ++i) {
    if (model.processes[i].name == id.process) {
      population[i].erase(id.number);
    }
  }
}

void SimulatedSystem::setTimer(ProcessInstance& owner, const std::string& timer, Time delay) {
  resetTimer(owner, timer);
  const Time expiry = time + delay;
  const auto later = std::find_if(activeTimers.begin(), activeTimers.end(),
                                  [&](const TimerInfo& each) { return each.expiry > expiry; });
  activeTimers.insert(later, {owner.id, timer, expiry});
}

void SimulatedSystem::resetTimer(ProcessInstance& owner, const std::string& timer) {
  std::erase_if(activeTimers, [&](const TimerInfo& each) {
    return each.owner == owner.id && each.name == timer;
  });
  std::erase_if(owner.queue,
                [&](const QueuedSignal& signal) { return signal.isTimer && signal.name == timer; });
  updateReady(owner);
}

void SimulatedSystem::deliverDueTimers() {
  while (!activeTimers.empty() && activeTimers.front().expiry <= time) {
    const TimerInfo timer = activeTimers.front();
    activeTimers.erase(activeTimers.begin());
    deliver(timer.owner, {.name = timer.name, .isTimer = true});
  }
}

/// Puts the instance into the ready queue or takes it out, as its queue and state demand.
void SimulatedSystem::updateReady(ProcessInstance& instance) {
  const bool shouldBeReady = !instance.isFiring && (!instance.hasStarted() ||
                                                    firstInput(instance) < instance.queue.size());
  if (shouldBeReady && !instance.isReady) {
    readyQueue.push_back(instance.id);
  } else if (!shouldBeReady && instance.isReady) {
    std::erase(readyQueue, instance.id);
  }
  instance.isReady = shouldBeReady;
}

}  // namespace tester
