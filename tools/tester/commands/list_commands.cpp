#include "tester/commands/columns.h"
#include "tester/commands/command_functions.h"
#include "tester/commands/debugger.h"
#include "tester/commands/user_words.h"

namespace tester {

namespace {

constexpr char kIndent[] = "  ";

std::string senderText(const QueuedSignal& signal) {
  if (signal.isTimer) {
    return "timer";
  }
  return "from " + (signal.sender.isNull() ? std::string("env") : formatInstance(signal.sender));
}

/// False when the queue is empty.
bool printQueue(Debugger& debugger, const InstanceInfo& instance) {
  Columns columns;
  for (const QueuedSignal& signal : debugger.engine().queue(instance.id)) {
    columns.add({signal.name + formatParameters(signal.parameters), senderText(signal),
                 signal.isSaved ? "saved" : ""});
  }
  if (columns.isEmpty()) {
    return false;
  }
  debugger.print(formatInstance(instance.id) + " in " + instance.state + ':');
  debugger.dialogue().print(columns.text(kIndent));
  return true;
}

void printVariables(Debugger& debugger, const std::vector<Variable>& variables) {
  Columns columns;
  for (const Variable& variable : variables) {
    columns.add({variable.name, variable.sort.name, formatValue(variable.value)});
  }
  if (!columns.isEmpty()) {
    debugger.dialogue().print(columns.text(kIndent));
  }
}

std::string orNone(const std::vector<std::string>& names) {
  return names.empty() ? "none" : joinNames(names);
}

}  // namespace

CommandEnd listProcesses(Debugger& debugger, const Words& arguments) {
  std::string only;
  if (!arguments.empty()) {
    const auto process = findProcess(debugger.engine(), arguments[0]);
    if (!process) {
      return debugger.answer(process.problem);
    }
    only = process.value->name;
  }
  Columns columns;
  for (const InstanceInfo& instance : debugger.engine().instances()) {
    if (only.empty() || instance.id.process == only) {
      columns.add({formatInstance(instance.id), instance.state,
                   "queue " + std::to_string(instance.queueLength)});
    }
  }
  if (columns.isEmpty()) {
    return debugger.answer("No living instance.");
  }
  debugger.dialogue().print(columns.text());
  return CommandEnd::kDone;
}

CommandEnd listQueues(Debugger& debugger, const Words& arguments) {
  if (!arguments.empty()) {
    const auto id = findInstance(debugger.engine(), arguments[0]);
    if (!id) {
      return debugger.answer(id.problem);
    }
    if (!printQueue(debugger, *debugger.engine().instance(*id.value))) {
      debugger.print("The queue of " + formatInstance(*id.value) + " is empty.");
    }
    return CommandEnd::kDone;
  }
  bool hasPrinted = false;
  for (const InstanceInfo& instance : debugger.engine().instances()) {
    hasPrinted = printQueue(debugger, instance) || hasPrinted;
  }
  if (!hasPrinted) {
    debugger.print("All queues are empty.");
  }
  return CommandEnd::kDone;
}

CommandEnd listTimers(Debugger& debugger, const Words& /*arguments*/) {
  Columns columns;
  for (const TimerInfo& timer : debugger.engine().timers()) {
    columns.add({formatInstance(timer.owner), timer.name, "at " + formatTime(timer.expiry)});
  }
  if (columns.isEmpty()) {
    return debugger.answer("No timer is active.");
  }
  debugger.dialogue().print(columns.text());
  return CommandEnd::kDone;
}

CommandEnd listSignals(Debugger& debugger, const Words& arguments) {
  if (!arguments.empty()) {
    const auto signal = findSignal(debugger.engine(), arguments[0]);
    return debugger.answer(signal ? describeSignal(*signal.value) : signal.problem);
  }
  for (const SignalType& signal : debugger.engine().signalTypes()) {
    debugger.print(describeSignal(signal));
  }
  return CommandEnd::kDone;
}

CommandEnd listReady(Debugger& debugger, const Words& /*arguments*/) {
  Columns columns;
  for (const PendingTransition& transition : debugger.engine().ready()) {
    columns.add({formatInstance(transition.instance), transition.state, transition.input});
  }
  if (columns.isEmpty()) {
    return debugger.answer("No transition is ready; the next timer has to expire first.");
  }
  debugger.dialogue().print(columns.text());
  return CommandEnd::kDone;
}

CommandEnd listDefinitions(Debugger& debugger, const Words& arguments) {
  if (!arguments.empty()) {
    const auto process = findProcess(debugger.engine(), arguments[0]);
    if (!process) {
      return debugger.answer(process.problem);
    }
    debugger.print("Process " + process.value->name);
    debugger.print("  states: " + orNone(process.value->states));
    debugger.print("  timers: " + orNone(process.value->timers));
    debugger.print("  inputs: " + orNone(process.value->inputs));
    return CommandEnd::kDone;
  }
  Columns columns;
  for (const ProcessInfo& process : debugger.engine().processes()) {
    columns.add({process.name, std::to_string(process.liveInstances) + " living",
                 std::to_string(process.initialInstances) + " initial",
                 std::to_string(process.maximumInstances) + " at most"});
  }
  debugger.dialogue().print(columns.text());
  return CommandEnd::kDone;
}

CommandEnd showInstance(Debugger& debugger, const Words& arguments) {
  const auto id = findInstance(debugger.engine(), arguments[0]);
  if (!id) {
    return debugger.answer(id.problem);
  }
  const InstanceInfo instance = *debugger.engine().instance(*id.value);
  if (arguments.size() > 1) {
    const auto variable = findVariable(instance, arguments[1]);
    if (!variable) {
      return debugger.answer(variable.problem);
    }
    printVariables(debugger, {*variable.value});
    return CommandEnd::kDone;
  }
  debugger.print("Instance " + formatInstance(instance.id) + " in " + instance.state);
  debugger.print("  parent " + formatInstance(instance.parent) + ", offspring " +
                 formatInstance(instance.offspring) + ", sender " +
                 formatInstance(instance.sender) + ", queue " +
                 std::to_string(instance.queueLength));
  printVariables(debugger, instance.variables);
  return CommandEnd::kDone;
}

}  // namespace tester
