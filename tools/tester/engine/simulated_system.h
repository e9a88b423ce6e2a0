#pragma once

#include <memory>

#include "tester/engine/runtime.h"

namespace tester {

/// An engine that runs a model in virtual time. Deterministic: the same requests give the same
/// transitions, whatever the clock says.
class SimulatedSystem : public Engine {
 public:
  explicit SimulatedSystem(SystemModel systemModel);

  std::string systemName() const override { return model.name; }
  std::string description() const override { return model.description; }
  Time now() const override { return runtime->now(); }

  std::vector<ProcessInfo> processes() const override;
  std::vector<SignalType> signalTypes() const override { return model.signalTypes; }
  std::vector<InstanceInfo> instances() const override;
  std::optional<InstanceInfo> instance(const InstanceId& id) const override;
  std::vector<QueuedSignal> queue(const InstanceId& id) const override;
  std::vector<TimerInfo> timers() const override { return runtime->timers().all(); }
  std::vector<PendingTransition> ready() const override;

  std::optional<PendingTransition> prepare(Time limit) override;
  FiredTransition fire(TraceSink& sink) override;
  void passTime(Time time) override;
  Problem send(const std::string& signal, const InstanceId& receiver,
               std::vector<Value> parameters) override;
  Problem setTimer(const InstanceId& owner, const std::string& timer, Time delay) override;
  Problem resetTimer(const InstanceId& owner, const std::string& timer) override;
  Problem assign(const InstanceId& owner, const std::string& variable, Value value) override;
  void restart() override;

 private:
  PendingTransition pending(const InstanceId& id) const;

  const SystemModel model;
  std::unique_ptr<Runtime> runtime;
};

}  // namespace tester
