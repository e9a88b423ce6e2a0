#include "tester/commands/run.h"

#include <utility>

namespace tester {

namespace {

/// Transitions between two looks at the link; some hundred microseconds of work.
constexpr int kSliceTransitions = 500;

/// "Button:1 in Idle at Press", "Button:1 in start"
std::string describeTransition(const PendingTransition& transition) {
  const std::string input = transition.input.empty() ? "" : " at " + transition.input;
  return formatInstance(transition.instance) + " in " + transition.state + input;
}

}  // namespace

void Trace::setLevel(TraceLevel newLevel) {
  systemLevel = newLevel;
  levels.clear();
}

TraceLevel Trace::level(const std::string& process) const {
  const auto own = levels.find(process);
  return own == levels.end() ? systemLevel : own->second;
}

bool Trace::wants(TraceLevel wanted, const std::string& process) const {
  return wanted <= level(process) && !isMasked(process);
}

bool Trace::isMasked(const std::string& process) const {
  return mask && !mask->contains(process);
}

void Trace::trace(const std::string& line) {
  dialogue.print(line + '\n');
}

bool Run::runSlice(Trace& trace, const Dialogue& dialogue) {
  for (int i = 0; i < kSliceTransitions && dialogue.acceptsTrace(); ++i) {
    if (!step(trace)) {
      return false;
    }
  }
  return true;
}

void Run::interrupt() {
  end("Interrupted");
}

bool Run::step(Trace& trace) {
  if (goal.transitions && fired == *goal.transitions) {
    return end(fired == 1 ? "" : "Done");
  }
  const auto next = engine.prepare(goal.until.value_or(kForever - 1));
  if (!next) {
    if (!goal.until) {
      return end("Nothing to do until a signal comes: no transition is ready, no timer is active");
    }
    engine.passTime(*goal.until);
    return end("Done");
  }
  if (const Breakpoint* breakpoint = breakpointAt(*next)) {
    passed = next;
    return end("Breakpoint " + std::to_string(breakpoint->number) + " (" + breakpoint->text() +
               ") before " + describeTransition(*next));
  }
  passed.reset();
  FiredTransition result = engine.fire(trace);
  ++fired;
  history.add(engine.now(), *next, std::move(result.outcome));
  return !result.error || endInError(*next, *result.error);
}

const Breakpoint* Run::breakpointAt(const PendingTransition& next) const {
  if (fired == 0 && (goal.transitions || passed == next)) {
    return nullptr;
  }
  return breakpoints.find(next);
}

bool Run::endInError(const PendingTransition& transition, const std::string& problem) {
  error = "Dynamic error in " + describeTransition(transition) + ", now " +
          formatTime(engine.now()) + ":\n" + problem;
  end("Stopped");
  text.insert(0, error + '\n');
  return false;
}

bool Run::end(const std::string& reason) {
  if (!reason.empty()) {
    text = reason + "; transitions: " + std::to_string(fired) +
           ", now: " + formatTime(engine.now()) + ".\n";
  }
  return false;
}

}  // namespace tester
