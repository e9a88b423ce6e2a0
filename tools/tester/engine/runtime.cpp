#include "tester/engine/runtime.h"

#include <algorithm>
#include <utility>

namespace tester {

Value* ProcessInstance::variable(const std::string& name) {
  for (std::size_t i = 0; i < variables.size(); ++i) {
    if (type->variables[i].name == name) {
      return &variables[i];
    }
  }
  return nullptr;
}

bool saves(const ProcessType& type, const std::string& state, const std::string& input) {
  return std::any_of(type.saves.begin(), type.saves.end(),
                     [&](const SaveRow& row) { return row.state == state && row.input == input; });
}

const TransitionRow* findTransition(const ProcessType& type, const std::string& state,
                                    const std::string& input) {
  const TransitionRow* general = nullptr;
  for (const TransitionRow& row : type.transitions) {
    if (row.input != input) {
      continue;
    }
    if (row.state == state) {
      return &row;
    }
    if (row.state == kAnyState) {
      general = &row;
    }
  }
  return general;
}

Runtime::Runtime(const SystemModel& systemModel)
    : model(systemModel),
      population(systemModel.processes.size()),
      lastNumbers(systemModel.processes.size()) {
  for (const ProcessType& type : model.processes) {
    for (int i = 0; i < type.initialInstances; ++i) {
      create(type.name, InstanceId{});
    }
  }
}

ProcessInstance* Runtime::find(const InstanceId& id) {
  return const_cast<ProcessInstance*>(std::as_const(*this).find(id));
}

const ProcessInstance* Runtime::find(const InstanceId& id) const {
  for (std::size_t i = 0; i < population.size(); ++i) {
    if (model.processes[i].name != id.process) {
      continue;
    }
    const auto found = population[i].find(id.number);
    return found == population[i].end() ? nullptr : &found->second;
  }
  return nullptr;
}

InstanceId Runtime::create(const std::string& process, const InstanceId& parent) {
  const auto type = std::find_if(model.processes.begin(), model.processes.end(),
                                 [&](const ProcessType& each) { return each.name == process; });
  if (type == model.processes.end()) {
    return {};
  }
  const auto index = static_cast<std::size_t>(type - model.processes.begin());
  if (population[index].size() >= static_cast<std::size_t>(type->maximumInstances)) {
    return {};
  }
  const int number = ++lastNumbers[index];
  ProcessInstance& instance = population[index][number];
  instance.id = {process, number};
  instance.type = &*type;
  instance.parent = parent;
  for (const Variable& variable : type->variables) {
    instance.variables.push_back(variable.value);
  }
  updateReady(instance);
  return instance.id;
}

void Runtime::remove(const InstanceId& id) {
  activeTimers.removeOwner(id);
  std::erase(ready, id);
  for (std::size_t i = 0; i < population.size(); ++i) {
    if (model.processes[i].name == id.process) {
      population[i].erase(id.number);
    }
  }
}

bool Runtime::deliver(const InstanceId& receiver, QueuedSignal signal) {
  ProcessInstance* instance = find(receiver);
  if (instance == nullptr) {
    return false;
  }
  instance->queue.push_back(std::move(signal));
  updateReady(*instance);
  return true;
}

void Runtime::setTimer(ProcessInstance& owner, const std::string& timer, Time delay) {
  resetTimer(owner, timer);
  activeTimers.set(owner.id, timer, addTime(time, delay));
}

bool Runtime::resetTimer(ProcessInstance& owner, const std::string& timer) {
  const bool wasActive = activeTimers.reset(owner.id, timer);
  const auto removed = std::erase_if(owner.queue, [&](const QueuedSignal& signal) {
    return signal.isTimer && signal.name == timer;
  });
  updateReady(owner);
  return wasActive || removed != 0;
}

void Runtime::deliverDueTimers() {
  while (const auto timer = activeTimers.takeExpired(time)) {
    QueuedSignal signal;
    signal.name = timer->name;
    signal.isTimer = true;
    deliver(timer->owner, std::move(signal));
  }
}

void Runtime::advance(Time limit) {
  deliverDueTimers();
  while (ready.empty() && !activeTimers.all().empty() &&
         activeTimers.all().front().expiry <= limit) {
    time = activeTimers.all().front().expiry;
    deliverDueTimers();
  }
}

ProcessInstance* Runtime::takeReady() {
  if (ready.empty()) {
    return nullptr;
  }
  ProcessInstance* instance = find(ready.front());
  ready.pop_front();
  instance->isReady = false;
  return instance;
}

void Runtime::updateReady(ProcessInstance& instance) {
  const bool hasInput =
      std::any_of(instance.queue.begin(), instance.queue.end(), [&](const QueuedSignal& signal) {
        return !saves(*instance.type, instance.state, signal.name);
      });
  const bool shouldBeReady = !instance.isFiring && (hasInput || !instance.hasStarted());
  if (shouldBeReady && !instance.isReady) {
    ready.push_back(instance.id);
  } else if (!shouldBeReady && instance.isReady) {
    std::erase(ready, instance.id);
  }
  instance.isReady = shouldBeReady;
}

}  // namespace tester
