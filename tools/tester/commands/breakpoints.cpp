#include "tester/commands/breakpoints.h"

#include <algorithm>

namespace tester {

namespace {

bool matchesName(const std::string& wanted, const std::string& name) {
  return wanted.empty() || wanted == name;
}

std::string orAny(const std::string& name) {
  return name.empty() ? "*" : name;
}

}  // namespace

bool Breakpoint::matches(const PendingTransition& transition) const {
  return matchesName(process, transition.instance.process) &&
         (instanceNumber == 0 || instanceNumber == transition.instance.number) &&
         matchesName(state, transition.state) && matchesName(input, transition.input);
}

std::string Breakpoint::text() const {
  const std::string instance =
      instanceNumber == 0 ? orAny(process) : formatInstance({process, instanceNumber});
  return instance + " in " + orAny(state) + " at " + orAny(input);
}

int Breakpoints::add(Breakpoint breakpoint) {
  for (const Breakpoint& each : breakpoints) {
    if (each.text() == breakpoint.text()) {
      return each.number;
    }
  }
  breakpoint.number = ++lastNumber;
  breakpoints.push_back(std::move(breakpoint));
  return lastNumber;
}

bool Breakpoints::remove(int number) {
  return std::erase_if(breakpoints,
                       [&](const Breakpoint& each) { return each.number == number; }) != 0;
}

const Breakpoint* Breakpoints::find(const PendingTransition& transition) const {
  const auto first = std::find_if(breakpoints.begin(), breakpoints.end(),
                                  [&](const Breakpoint& each) { return each.matches(transition); });
  return first == breakpoints.end() ? nullptr : &*first;
}

}  // namespace tester
