#include "tester/words.h"

#include <algorithm>
#include <sstream>

#include "support/text.h"

namespace tester {

namespace {

constexpr std::size_t kColumnGap = 2;

/// The item whose name the word is or begins.
template <typename Item>
const Item& findItem(const std::vector<Item>& items, const std::string& word,
                     std::string_view kind) {
  const std::string name = findName(word, namesOf(items), kind);
  return *std::find_if(items.begin(), items.end(),
                       [&name](const Item& item) { return item.name == name; });
}

}  // namespace

Words splitWords(std::string_view command) {
  std::istringstream stream{std::string(command)};
  Words words;
  for (std::string word; stream >> word;) {
    words.push_back(word);
  }
  return words;
}

std::string findName(std::string_view word, const Words& names, std::string_view kind) {
  Words candidates;
  for (const std::string& name : names) {
    if (equalIgnoringCase(word, name)) {
      return name;
    }
    if (!word.empty() && equalIgnoringCase(word, std::string_view(name).substr(0, word.size()))) {
      candidates.push_back(name);
    }
  }
  if (candidates.size() == 1) {
    return candidates.front();
  }
  const std::string what = std::string(kind) + " \"" + std::string(word) + '"';
  throw Refusal{candidates.empty()
                    ? "Unknown " + what + '.'
                    : "Ambiguous " + what + ", it may be: " + joinNames(candidates) + '.'};
}

const ProcessType& findProcess(const SimulatedSystem& system, const std::string& word) {
  return findItem(system.definition().processes, word, "process");
}

const SignalType& findSignal(const SimulatedSystem& system, const std::string& word) {
  return findItem(system.definition().signalTypes, word, "signal");
}

InstanceId readInstanceName(const SimulatedSystem& system, const std::string& word) {
  const std::size_t colon = word.find(':');
  const std::string& name = findProcess(system, word.substr(0, colon)).name;
  if (colon == std::string::npos) {
    return {name, 0};
  }
  const auto instance = parseInstance(name + word.substr(colon));
  if (!instance) {
    throw Refusal{"No instance number in \"" + word + "\"."};
  }
  return *instance;
}

InstanceId findInstance(const SimulatedSystem& system, const std::string& word) {
  InstanceId id = readInstanceName(system, word);
  if (system.find(id) != nullptr) {
    return id;
  }
  const std::vector<InstanceId> living = livingInstances(system, id.process);
  if (id.number == 0 && living.size() == 1) {
    return living.front();
  }
  throw Refusal{id.number != 0 ? "There is no instance " + formatInstance(id) + '.'
                               : "Process " + id.process + " has " +
                                     countedThings(living.size(), "living instance") + '.'};
}

std::int64_t readCount(const std::string& word, std::int64_t least) {
  const auto number = parseNumber(word, least);
  if (!number) {
    throw Refusal{'"' + word + "\" is no whole number from " + std::to_string(least) + " up."};
  }
  return *number;
}

std::vector<InstanceId> livingInstances(const SimulatedSystem& system, const std::string& process) {
  std::vector<InstanceId> ids;
  for (const ProcessInstance* instance : system.instances()) {
    if (process.empty() || instance->id.process == process) {
      ids.push_back(instance->id);
    }
  }
  return ids;
}

std::vector<Value> readParameters(const SignalType& signal, const Words& words) {
  if (words.size() != signal.parameters.size()) {
    throw Refusal{"Signal " + describeSignal(signal) + " takes " +
                  countedThings(signal.parameters.size(), "parameter") +
                  ", given: " + std::to_string(words.size()) + '.'};
  }
  std::vector<Value> values;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const Sort& sort = signal.parameters[i];
    const auto value = parseValue(sort, words[i]);
    if (!value) {
      throw Refusal{"Parameter " + std::to_string(i + 1) + " of " + describeSignal(signal) +
                    " must be " + expectedText(sort) + ", not \"" + words[i] + "\"."};
    }
    values.push_back(*value);
  }
  return values;
}

std::string describeSignal(const SignalType& signal) {
  return signal.name + formatParameters(namesOf(signal.parameters));
}

std::string countedThings(std::size_t count, const std::string& thing) {
  return std::to_string(count) + ' ' + thing + (count == 1 ? "" : "s");
}

std::string columnText(const std::vector<Words>& rows, const std::string& indent) {
  std::vector<std::size_t> widths;
  for (const Words& row : rows) {
    widths.resize(std::max(widths.size(), row.size()), 0);
    for (std::size_t i = 0; i < row.size(); ++i) {
      widths[i] = std::max(widths[i], row[i].size());
    }
  }
  std::string lines;
  for (const Words& row : rows) {
    std::string line = indent;
    for (std::size_t i = 0; i < row.size(); ++i) {
      line += row[i] + std::string(widths[i] - row[i].size() + kColumnGap, ' ');
    }
    line.erase(line.find_last_not_of(' ') + 1);
    lines += line + '\n';
  }
  return lines;
}

}  // namespace tester
