// Commands that run the system, and that say where runs stop and what they tell.

#include <algorithm>

#include "tester/commands.h"
#include "tester/debugger.h"

namespace tester {

namespace {

using tester_link::Answer;

constexpr char kNoBreakpoint[] = "No breakpoint is set.";

/// Finds a state or an input among those of the process, or of all processes when it is empty.
std::string findMember(const SimulatedSystem& system, const std::string& process,
                       const std::string& word, bool isState) {
  Words names;
  for (const ProcessType& type : system.definition().processes) {
    if (process.empty() || type.name == process) {
      const Words more = isState ? type.states : type.inputs();
      names.insert(names.end(), more.begin(), more.end());
    }
  }
  if (isState) {
    names.emplace_back(kStartState);
  }
  std::sort(names.begin(), names.end());
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return findName(word, names, isState ? "state" : "signal or timer");
}

Breakpoint readBreakpoint(const SimulatedSystem& system, const Words& words) {
  Breakpoint breakpoint;
  if (words[0] != kAnyWord) {
    const InstanceId instance = readInstanceName(system, words[0]);
    breakpoint.process = instance.process;
    breakpoint.instanceNumber = instance.number;
  }
  for (std::size_t i = 1; i < words.size(); ++i) {
    if (words[i] != kAnyWord) {
      (i == 1 ? breakpoint.state : breakpoint.input) =
          findMember(system, breakpoint.process, words[i], i == 1);
    }
  }
  return breakpoint;
}

void removeByWord(Debugger& debugger, const std::string& word) {
  const auto number = parseNumber(word, 1);
  const auto removed = std::erase_if(debugger.breakpoints(), [&](const Breakpoint& each) {
    return word == kAnyWord || each.number == number;
  });
  debugger.print(removed == 0 ? "There is no breakpoint \"" + word + "\"."
                              : "Removed: " + countedThings(removed, "breakpoint") + '.');
}

void traceOnly(Debugger& debugger, const Words& processes) {
  debugger.trace().mask.emplace(processes.begin(), processes.end());
  listTrace(debugger, {});
}

}  // namespace

void nextTransition(Debugger& debugger, const Words& arguments) {
  debugger.startRun({arguments.empty() ? 1 : readCount(arguments[0], 1), {}});
}

void go(Debugger& debugger, const Words& /*arguments*/) {
  debugger.startRun({});
}

void proceedUntil(Debugger& debugger, const Words& arguments) {
  const auto time = parseTime(arguments[0]);
  if (!time || *time < debugger.system().now()) {
    throw Refusal{'"' + arguments[0] + "\" is no time in seconds from " +
                  formatTime(debugger.system().now()) + " on."};
  }
  debugger.startRun({{}, time});
}

void stopRun(Debugger& debugger, const Words& /*arguments*/) {
  if (!debugger.hasInterrupted()) {
    debugger.print("No run is going on.");
  }
}

void restartSystem(Debugger& debugger, const Words& /*arguments*/) {
  debugger.restart();
}

void setBreakpoint(Debugger& debugger, const Words& arguments) {
  const Breakpoint breakpoint = readBreakpoint(debugger.system(), arguments);
  const int number = debugger.addBreakpoint(breakpoint);
  debugger.print("Breakpoint " + std::to_string(number) + ": " + breakpoint.text());
}

void removeBreakpoint(Debugger& debugger, const Words& arguments) {
  const auto& all = debugger.breakpoints();
  if (!arguments.empty()) {
    removeByWord(debugger, arguments[0]);
  } else if (all.empty()) {
    debugger.print(kNoBreakpoint);
  } else {
    debugger.user().askNumberInRange(
        "Number of the breakpoint to remove:", {all.front().number, all.back().number, true},
        debugger.then([&debugger](const Answer& answer) { removeByWord(debugger, answer.text); }));
  }
}

void setTrace(Debugger& debugger, const Words& arguments) {
  constexpr auto kHighest = static_cast<int>(TraceLevel::kDetails);
  const std::int64_t level = readCount(arguments[0], 0);
  if (level > kHighest) {
    throw Refusal{"The highest trace level is " + std::to_string(kHighest) + '.'};
  }
  debugger.trace().level = static_cast<TraceLevel>(level);
  listTrace(debugger, {});
}

void maskTrace(Debugger& debugger, const Words& arguments) {
  if (arguments.empty()) {
    debugger.user().askBits(
        "Processes to trace:", namesOf(debugger.system().definition().processes),
        debugger.then([&debugger](const Answer& answer) { traceOnly(debugger, answer.items); }));
    return;
  }
  if (arguments == Words{kAnyWord}) {
    debugger.trace().mask.reset();
    listTrace(debugger, {});
    return;
  }
  Words processes;
  for (const std::string& word : arguments) {
    processes.push_back(findProcess(debugger.system(), word).name);
  }
  traceOnly(debugger, processes);
}

}  // namespace tester
