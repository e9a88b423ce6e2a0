#include <algorithm>
#include <set>

#include "tester/commands/columns.h"
#include "tester/commands/command_functions.h"
#include "tester/commands/debugger.h"
#include "tester/commands/numbers.h"
#include "tester/commands/user_words.h"

namespace tester {

namespace {

constexpr char kResetCaption[] = "Korvane - Reset system";
constexpr char kNoBreakpoint[] = "No breakpoint is set.";

void addNames(std::vector<std::string>& names, const std::vector<std::string>& more) {
  for (const std::string& name : more) {
    if (std::find(names.begin(), names.end(), name) == names.end()) {
      names.push_back(name);
    }
  }
}

/// Finds a state or an input among those of the process, or of all processes when it is empty.
Lookup<std::string> findMember(const Engine& engine, const std::string& process,
                               std::vector<std::string> ProcessInfo::*member,
                               const std::string& word, std::string_view kind) {
  std::vector<std::string> names;
  if (member == &ProcessInfo::states) {
    names.emplace_back(kStartState);
  }
  for (const ProcessInfo& each : engine.processes()) {
    if (process.empty() || each.name == process) {
      addNames(names, each.*member);
    }
  }
  return findName(word, names, kind);
}

Lookup<Breakpoint> readBreakpoint(const Engine& engine, const Words& words) {
  Breakpoint breakpoint;
  if (words[0] != kAnyWord) {
    const auto instance = readInstanceName(engine, words[0]);
    if (!instance) {
      return notFound<Breakpoint>(instance.problem);
    }
    breakpoint.process = instance.value->process;
    breakpoint.instanceNumber = instance.value->number;
  }
  if (words.size() > 1 && words[1] != kAnyWord) {
    const auto state =
        findMember(engine, breakpoint.process, &ProcessInfo::states, words[1], "state");
    if (!state) {
      return notFound<Breakpoint>(state.problem);
    }
    breakpoint.state = *state.value;
  }
  if (words.size() > 2 && words[2] != kAnyWord) {
    const auto input =
        findMember(engine, breakpoint.process, &ProcessInfo::inputs, words[2], "signal or timer");
    if (!input) {
      return notFound<Breakpoint>(input.problem);
    }
    breakpoint.input = *input.value;
  }
  return found(breakpoint);
}

/// Removes the breakpoint of that number, or all; what to say about it.
Lookup<std::string> removeByWord(Breakpoints& breakpoints, const std::string& word) {
  if (word == kAnyWord) {
    breakpoints.clear();
    return found<std::string>("All breakpoints are removed.");
  }
  const auto number = readCount(word, 1);
  if (!number || *number.value > INT32_MAX ||
      !breakpoints.remove(static_cast<int>(*number.value))) {
    return notFound<std::string>("There is no breakpoint \"" + word + "\".");
  }
  return found("Breakpoint " + std::to_string(*number.value) + " is removed.");
}

CommandEnd traceOnly(Debugger& debugger, const Words& processes) {
  debugger.trace().setMask(std::set<std::string>(processes.begin(), processes.end()));
  return debugger.answer(processes.empty() ? "No process is traced."
                                           : "Only traced: " + joinNames(processes));
}

/// What a reset loses, in lines; empty when that is nothing.
std::string lossesOfReset(Debugger& debugger) {
  std::size_t signals = 0;
  for (const InstanceInfo& instance : debugger.engine().instances()) {
    signals += instance.queueLength;
  }
  std::string losses;
  if (const std::size_t count = debugger.breakpoints().all().size()) {
    losses += countedThings(count, "breakpoint") + '\n';
  }
  if (signals != 0) {
    losses += countedThings(signals, "queued signal") + '\n';
  }
  return losses;
}

std::string levelText(TraceLevel level) {
  return std::to_string(static_cast<int>(level));
}

}  // namespace

CommandEnd listBreakpoints(Debugger& debugger, const Words& /*arguments*/) {
  Columns columns;
  for (const Breakpoint& breakpoint : debugger.breakpoints().all()) {
    columns.add({std::to_string(breakpoint.number), breakpoint.text()});
  }
  if (columns.isEmpty()) {
    return debugger.answer(kNoBreakpoint);
  }
  return debugger.printList(columns.text());
}

CommandEnd setBreakpoint(Debugger& debugger, const Words& arguments) {
  const auto breakpoint = readBreakpoint(debugger.engine(), arguments);
  if (!breakpoint) {
    return debugger.answer(breakpoint.problem);
  }
  const int number = debugger.breakpoints().add(*breakpoint.value);
  debugger.print("Breakpoint " + std::to_string(number) + ": " + breakpoint.value->text());
  return CommandEnd::kDone;
}

CommandEnd removeBreakpoint(Debugger& debugger, const Words& arguments) {
  if (!arguments.empty()) {
    const auto result = removeByWord(debugger.breakpoints(), arguments[0]);
    return debugger.answer(result ? *result.value : result.problem);
  }
  const auto& all = debugger.breakpoints().all();
  if (all.empty()) {
    return debugger.answer(kNoBreakpoint);
  }
  return debugger.askNumberInRange(
      "Number of the breakpoint to remove:", {all.front().number, all.back().number, true},
      [&debugger](const Answer& reply) {
        const auto result = removeByWord(debugger.breakpoints(), reply.text);
        return result ? debugger.answer(*result.value) : debugger.refuse(result.problem);
      });
}

CommandEnd listTrace(Debugger& debugger, const Words& /*arguments*/) {
  Columns columns;
  columns.add({"system", levelText(debugger.trace().level())});
  for (const ProcessInfo& process : debugger.engine().processes()) {
    columns.add({"  " + process.name, levelText(debugger.trace().level(process.name)),
                 debugger.trace().isMasked(process.name) ? "masked" : ""});
  }
  return debugger.printList(columns.text());
}

CommandEnd setTrace(Debugger& debugger, const Words& arguments) {
  const auto number = readCount(arguments[0], static_cast<int>(TraceLevel::kNone));
  if (!number || *number.value > static_cast<int>(TraceLevel::kDetails)) {
    return debugger.answer("A trace level is a number from " + levelText(TraceLevel::kNone) +
                           " to " + levelText(TraceLevel::kDetails) + '.');
  }
  const auto level = static_cast<TraceLevel>(*number.value);
  if (arguments.size() == 1) {
    debugger.trace().setLevel(level);
    return debugger.answer("Trace level of the system: " + levelText(level));
  }
  const auto process = findProcess(debugger.engine(), arguments[1]);
  if (!process) {
    return debugger.answer(process.problem);
  }
  debugger.trace().setLevel(process.value->name, level);
  return debugger.answer("Trace level of " + process.value->name + ": " + levelText(level));
}

CommandEnd maskTrace(Debugger& debugger, const Words& arguments) {
  Words processes;
  if (arguments.empty()) {
    for (const ProcessInfo& process : debugger.engine().processes()) {
      processes.push_back(process.name);
    }
    return debugger.askBits("Processes to trace:", processes, [&debugger](const Answer& reply) {
      return traceOnly(debugger, reply.items);
    });
  }
  if (arguments == Words{kAnyWord}) {
    debugger.trace().setMask({});
    return debugger.answer("All processes are traced.");
  }
  for (const std::string& word : arguments) {
    const auto process = findProcess(debugger.engine(), word);
    if (!process) {
      return debugger.answer(process.problem);
    }
    processes.push_back(process.value->name);
  }
  return traceOnly(debugger, processes);
}

CommandEnd setPageLength(Debugger& debugger, const Words& arguments) {
  const auto lines = readCount(arguments[0], 0);
  if (!lines) {
    return debugger.answer(lines.problem);
  }
  const auto length = static_cast<std::size_t>(*lines.value);
  debugger.setPageLength(length);
  return debugger.answer(length == 0 ? "Lists are not paged."
                                     : "Page length: " + countedThings(length, "line"));
}

CommandEnd nextTransition(Debugger& debugger, const Words& arguments) {
  std::int64_t transitions = 1;
  if (!arguments.empty()) {
    const auto count = readCount(arguments[0], 1);
    if (!count) {
      return debugger.answer(count.problem);
    }
    transitions = *count.value;
  }
  return debugger.startRun(RunGoal{transitions, {}});
}

CommandEnd go(Debugger& debugger, const Words& /*arguments*/) {
  return debugger.startRun({});
}

CommandEnd proceedUntil(Debugger& debugger, const Words& arguments) {
  const auto time = readTime(arguments[0]);
  if (!time) {
    return debugger.answer(time.problem);
  }
  if (*time.value < debugger.engine().now()) {
    return debugger.answer("This time is over: it is " + formatTime(debugger.engine().now()) + '.');
  }
  return debugger.startRun(RunGoal{{}, *time.value});
}

CommandEnd stopRun(Debugger& debugger, const Words& /*arguments*/) {
  if (!debugger.hasInterrupted()) {
    debugger.print("No run is going on.");
  }
  return CommandEnd::kDone;
}

CommandEnd restartSystem(Debugger& debugger, const Words& /*arguments*/) {
  return debugger.restart();
}

CommandEnd resetSystem(Debugger& debugger, const Words& /*arguments*/) {
  const std::string losses = lossesOfReset(debugger);
  debugger.breakpoints().clear();
  debugger.trace().setLevel(kUsualTraceLevel);
  debugger.trace().setMask({});
  debugger.setPageLength(Debugger::kUsualPageLength);
  const CommandEnd end = debugger.restart();
  if (!losses.empty()) {
    debugger.dialogue().showWarning(kResetCaption, "Lost by the reset:\n" + trimmed(losses));
  }
  return end;
}

CommandEnd showNow(Debugger& debugger, const Words& /*arguments*/) {
  return debugger.answer("now = " + formatTime(debugger.engine().now()));
}

CommandEnd exitTester(Debugger& debugger, const Words& /*arguments*/) {
  debugger.dialogue().askToExit();
  return CommandEnd::kDone;
}

}  // namespace tester
