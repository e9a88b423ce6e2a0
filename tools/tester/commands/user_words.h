#pragma once

#include <string>
#include <vector>

#include "tester/commands/names.h"
#include "tester/engine/engine.h"

/// What the words of a command mean in the system under test. Names may be abbreviated as far as
/// they stay unique.
namespace tester {

inline constexpr char kAnyWord[] = "*";

Lookup<ProcessInfo> findProcess(const Engine& engine, const std::string& word);

/// "Button:2" or "Button", number 0; such an instance need not live.
Lookup<InstanceId> readInstanceName(const Engine& engine, const std::string& word);

/// A living instance: "Button:2", or the process alone when it has exactly one living instance.
Lookup<InstanceId> findInstance(const Engine& engine, const std::string& word);

Lookup<Variable> findVariable(const InstanceInfo& instance, const std::string& word);

Lookup<SignalType> findSignal(const Engine& engine, const std::string& word);

/// The values of a signal's parameters.
Lookup<std::vector<Value>> readParameters(const SignalType& signal,
                                          const std::vector<std::string>& words);

/// "Press, Arrive(Integer)": a signal with the sorts of its parameters.
std::string describeSignal(const SignalType& signal);

/// A whole number of at least `least`.
Lookup<std::int64_t> readCount(const std::string& word, std::int64_t least);

/// A duration or a time in seconds.
Lookup<Time> readTime(const std::string& word);

}  // namespace tester
