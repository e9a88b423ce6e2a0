#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tester/simulated_system.h"

/// What the words of a command mean in the system under test, and how lists are laid out. The case
/// of letters does not matter; names may be abbreviated as far as they stay unique. What means
/// nothing throws a Refusal.
namespace tester {

using Words = std::vector<std::string>;

/// Why a command or an answer is not carried out, one sentence for the user.
struct Refusal {
  std::string text;
};

inline constexpr char kAnyWord[] = "*";

Words splitWords(std::string_view command);

/// The one of `names` that the word is or begins; the whole name wins over longer ones. `kind` says
/// in a problem text what was looked for: "process".
std::string findName(std::string_view word, const Words& names, std::string_view kind);

const ProcessType& findProcess(const SimulatedSystem& system, const std::string& word);
const SignalType& findSignal(const SimulatedSystem& system, const std::string& word);

/// "Button:2" or "Button", number 0; such an instance need not live.
InstanceId readInstanceName(const SimulatedSystem& system, const std::string& word);

/// A living instance: "Button:2", or the process alone when it has exactly one living instance.
InstanceId findInstance(const SimulatedSystem& system, const std::string& word);

/// A whole number of at least `least`.
std::int64_t readCount(const std::string& word, std::int64_t least);

/// Living instances of a process; of all when `process` is empty.
std::vector<InstanceId> livingInstances(const SimulatedSystem& system, const std::string& process);

/// The values of a signal's parameters.
std::vector<Value> readParameters(const SignalType& signal, const Words& words);

/// "Arrive(Integer)": a signal with the sorts of its parameters.
std::string describeSignal(const SignalType& signal);

/// The names of things.
template <typename Items>
Words namesOf(const Items& items) {
  Words names;
  for (const auto& item : items) {
    names.push_back(item.name);
  }
  return names;
}

/// "1 signal", "7 signals"
std::string countedThings(std::size_t count, const std::string& thing);

/// Lines of text columns, each as wide as its widest cell, after `indent`; with their ends and
/// without blanks before these.
std::string columnText(const std::vector<Words>& rows, const std::string& indent = "");

}  // namespace tester
