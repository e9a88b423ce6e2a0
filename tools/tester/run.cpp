#include "tester/run.h"

#include <algorithm>

namespace tester {

namespace {

/// Transitions between two looks at the link; some hundred microseconds of work.
constexpr int kSliceTransitions = 500;

bool matchesName(const std::string& wanted, const std::string& name) {
  return wanted.empty() || wanted == name;
}

std::string orAny(const std::string& name) {
  return name.empty() ? "*" : name;
}

/// "Button:1 in Idle at Press", "Button:1 in start"
std::string describeTransition(const PendingTransition& transition) {
  const std::string input = transition.input.empty() ? "" : " at " + transition.input;
  return formatInstance(transition.instance) + " in " + transition.state + input;
}

}  // namespace

bool Breakpoint::matches(const PendingTransition& transition) const {
  return matchesName(process, transition.instance.process) &&
         (instanceNumber == 0 || instanceNumber == transition.instance.number) &&
         matchesName(state, transition.state) && matchesName(input, transition.input);
}

std::string Breakpoint::text() const {
  return (instanceNumber == 0 ? orAny(process) : formatInstance({process, instanceNumber})) +
         " in " + orAny(state) + " at " + orAny(input);
}

bool Run::runSlice(const Trace& trace, tester_link::UserLink& user) {
  for (int i = 0; i < kSliceTransitions && user.acceptsText(); ++i) {
    if (!step(trace, user)) {
      return false;
    }
  }
  return true;
}

bool Run::step(const Trace& trace, tester_link::UserLink& user) {
  if (goal.transitions && fired == *goal.transitions) {
    return end(fired == 1 ? "" : "Done");
  }
  const auto next = system.prepare(goal.until.value_or(kForever - 1));
  if (!next && goal.until) {
    system.passTime(*goal.until);
    return end("Done");
  }
  if (!next) {
    return end("Nothing to do until a signal comes: no transition is ready, no timer is active");
  }
  if (const Breakpoint* breakpoint = breakpointAt(*next)) {
    passed = next;
    return end("Breakpoint " + std::to_string(breakpoint->number) + " (" + breakpoint->text() +
               ") before " + describeTransition(*next));
  }
  passed.reset();
  const FiredTransition result = system.fire(trace);
  ++fired;
  user.print(result.trace);
  if (!result.error) {
    return true;
  }
  error = "Dynamic error in " + describeTransition(*next) + ", now " + formatTime(system.now()) +
          ":\n" + *result.error;
  end("Stopped");
  text.insert(0, error + '\n');
  return false;
}

const Breakpoint* Run::breakpointAt(const PendingTransition& next) const {
  if (fired == 0 && (goal.transitions || passed == next)) {
    return nullptr;
  }
  const auto first = std::find_if(breakpoints.begin(), breakpoints.end(),
                                  [&](const Breakpoint& each) { return each.matches(next); });
  return first == breakpoints.end() ? nullptr : &*first;
}

bool Run::end(const std::string& reason) {
  if (!reason.empty()) {
    text = reason + "; transitions: " + std::to_string(fired) +
           ", now: " + formatTime(system.now()) + ".\n";
  }
  return false;
}

}  // namespace tester
