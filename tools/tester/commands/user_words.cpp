#include "tester/commands/user_words.h"

namespace tester {

namespace {

/// The item whose name the word is or abbreviates.
template <typename Item>
Lookup<Item> findItem(const std::vector<Item>& items, const std::string& word,
                      std::string_view kind) {
  std::vector<std::string> names;
  names.reserve(items.size());
  for (const Item& item : items) {
    names.push_back(item.name);
  }
  const auto name = findName(word, names, kind);
  for (const Item& item : items) {
    if (name && item.name == *name.value) {
      return found(item);
    }
  }
  return notFound<Item>(name.problem);
}

}  // namespace

Lookup<ProcessInfo> findProcess(const Engine& engine, const std::string& word) {
  return findItem(engine.processes(), word, "process");
}

Lookup<InstanceId> readInstanceName(const Engine& engine, const std::string& word) {
  const std::size_t colon = word.find(':');
  const auto process = findProcess(engine, word.substr(0, colon));
  if (!process) {
    return notFound<InstanceId>(process.problem);
  }
  if (colon == std::string::npos) {
    return found(InstanceId{process.value->name, 0});
  }
  const auto number = readCount(word.substr(colon + 1), 1);
  if (!number || *number.value > INT32_MAX) {
    return notFound<InstanceId>("No instance number in \"" + word + "\".");
  }
  return found(InstanceId{process.value->name, static_cast<int>(*number.value)});
}

Lookup<InstanceId> findInstance(const Engine& engine, const std::string& word) {
  auto id = readInstanceName(engine, word);
  if (!id) {
    return id;
  }
  if (id.value->number != 0) {
    if (!engine.instance(*id.value)) {
      return notFound<InstanceId>("There is no instance " + formatInstance(*id.value) + '.');
    }
    return id;
  }
  std::vector<std::string> candidates;
  for (const InstanceInfo& instance : engine.instances()) {
    if (instance.id.process != id.value->process) {
      continue;
    }
    candidates.push_back(formatInstance(instance.id));
    id.value->number = instance.id.number;
  }
  if (candidates.empty()) {
    return notFound<InstanceId>("Process " + id.value->process + " has no living instance.");
  }
  if (candidates.size() > 1) {
    return notFound<InstanceId>("Which instance: " + joinNames(candidates) + '?');
  }
  return id;
}

Lookup<Variable> findVariable(const InstanceInfo& instance, const std::string& word) {
  return findItem(instance.variables, word, "variable");
}

Lookup<SignalType> findSignal(const Engine& engine, const std::string& word) {
  return findItem(engine.signalTypes(), word, "signal");
}

Lookup<std::vector<Value>> readParameters(const SignalType& signal,
                                          const std::vector<std::string>& words) {
  using Values = std::vector<Value>;
  if (words.size() != signal.parameters.size()) {
    return notFound<Values>("Signal " + describeSignal(signal) + " takes " +
                            std::to_string(signal.parameters.size()) +
                            " parameters, given: " + std::to_string(words.size()) + '.');
  }
  Values values;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const Sort& sort = signal.parameters[i];
    auto value = parseValue(sort, words[i]);
    if (!value) {
      return notFound<Values>("Parameter " + std::to_string(i + 1) + " of " +
                              describeSignal(signal) + " must be " + expectedText(sort) +
                              ", not \"" + words[i] + "\".");
    }
    values.push_back(std::move(*value));
  }
  return found(std::move(values));
}

std::string describeSignal(const SignalType& signal) {
  std::vector<std::string> sorts;
  for (const Sort& sort : signal.parameters) {
    sorts.push_back(sort.name);
  }
  return sorts.empty() ? signal.name : signal.name + '(' + joinNames(sorts) + ')';
}

Lookup<std::int64_t> readCount(const std::string& word, std::int64_t least) {
  const auto value = parseValue(integerSort(), word);
  if (!value || std::get<std::int64_t>(*value) < least) {
    return notFound<std::int64_t>('"' + word + "\" is no whole number from " +
                                  std::to_string(least) + " up.");
  }
  return found(std::get<std::int64_t>(*value));
}

Lookup<Time> readTime(const std::string& word) {
  const auto time = parseTime(word);
  if (!time) {
    return notFound<Time>('"' + word + "\" is no time in seconds, such as 12 or 2.5.");
  }
  return found(*time);
}

}  // namespace tester
