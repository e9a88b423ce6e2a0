#include "tester/commands/columns.h"
#include "tester/commands/command_functions.h"
#include "tester/commands/debugger.h"
#include "tester/commands/instance_questions.h"
#include "tester/commands/user_words.h"

namespace tester {

namespace {

constexpr char kIndent[] = "  ";
constexpr char kNothingFired[] = "No transition was fired yet.";

std::string senderText(const QueuedSignal& signal) {
  if (signal.isTimer) {
    return "timer";
  }
  return "from " + (signal.sender.isNull() ? std::string("env") : formatInstance(signal.sender));
}

/// The queue in lines; empty when it is.
std::string queueText(const Engine& engine, const InstanceInfo& instance) {
  Columns columns;
  for (const QueuedSignal& signal : engine.queue(instance.id)) {
    columns.add({signal.name + formatParameters(signal.parameters), senderText(signal),
                 signal.isSaved ? "saved" : ""});
  }
  if (columns.isEmpty()) {
    return "";
  }
  return formatInstance(instance.id) + " in " + instance.state + ":\n" + columns.text(kIndent);
}

std::string emptyQueueText(const InstanceId& id) {
  return "The queue of " + formatInstance(id) + " is empty.\n";
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

void printTimers(Debugger& debugger, const InstanceId& owner) {
  for (const TimerInfo& timer : debugger.engine().timers()) {
    if (timer.owner == owner) {
      debugger.print(kIndent + ("timer " + timer.name) + " at " + formatTime(timer.expiry));
    }
  }
}

void printInstance(Debugger& debugger, const InstanceInfo& instance) {
  debugger.print("Instance " + formatInstance(instance.id) + " in " + instance.state);
  debugger.print("  parent " + formatInstance(instance.parent) + ", offspring " +
                 formatInstance(instance.offspring) + ", sender " +
                 formatInstance(instance.sender) + ", queue " +
                 std::to_string(instance.queueLength));
  printTimers(debugger, instance.id);
  printVariables(debugger, instance.variables);
}

/// False when the instance has no such variable, which is said.
bool printVariable(Debugger& debugger, const InstanceInfo& instance, const std::string& word) {
  const auto variable = findVariable(instance, word);
  if (!variable) {
    debugger.print(variable.problem);
    return false;
  }
  printVariables(debugger, {*variable.value});
  return true;
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
  return debugger.printList(columns.text());
}

CommandEnd listQueues(Debugger& debugger, const Words& arguments) {
  if (!arguments.empty()) {
    return withInstances(debugger, arguments[0], NumberDefault::kAll,
                         [&debugger](const std::vector<InstanceId>& ids) {
                           std::string lines;
                           for (const InstanceId& id : ids) {
                             const std::string queue =
                                 queueText(debugger.engine(), *debugger.engine().instance(id));
                             lines += queue.empty() ? emptyQueueText(id) : queue;
                           }
                           return debugger.printList(lines);
                         });
  }
  std::string lines;
  for (const InstanceInfo& instance : debugger.engine().instances()) {
    lines += queueText(debugger.engine(), instance);
  }
  return lines.empty() ? debugger.answer("All queues are empty.") : debugger.printList(lines);
}

CommandEnd listTimers(Debugger& debugger, const Words& /*arguments*/) {
  Columns columns;
  for (const TimerInfo& timer : debugger.engine().timers()) {
    columns.add({formatInstance(timer.owner), timer.name, "at " + formatTime(timer.expiry)});
  }
  if (columns.isEmpty()) {
    return debugger.answer("No timer is active.");
  }
  return debugger.printList(columns.text());
}

CommandEnd listSignals(Debugger& debugger, const Words& arguments) {
  if (!arguments.empty()) {
    const auto signal = findSignal(debugger.engine(), arguments[0]);
    return debugger.answer(signal ? describeSignal(*signal.value) : signal.problem);
  }
  std::string lines;
  for (const SignalType& signal : debugger.engine().signalTypes()) {
    lines += describeSignal(signal) + '\n';
  }
  return debugger.printList(lines);
}

CommandEnd listHistory(Debugger& debugger, const Words& arguments) {
  std::size_t most = History::kMostEntries;
  if (!arguments.empty()) {
    const auto count = readCount(arguments[0], 1);
    if (!count) {
      return debugger.answer(count.problem);
    }
    most = static_cast<std::size_t>(*count.value);
  }
  const std::string lines = debugger.history().text(most);
  return lines.empty() ? debugger.answer(kNothingFired) : debugger.printList(lines);
}

CommandEnd listReady(Debugger& debugger, const Words& /*arguments*/) {
  Columns columns;
  for (const PendingTransition& transition : debugger.engine().ready()) {
    columns.add({formatInstance(transition.instance), transition.state, transition.input});
  }
  if (columns.isEmpty()) {
    return debugger.answer("No transition is ready; the next timer has to expire first.");
  }
  return debugger.printList(columns.text());
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
  return debugger.printList(columns.text());
}

CommandEnd showInstance(Debugger& debugger, const Words& arguments) {
  return withInstances(debugger, arguments.empty() ? "" : arguments[0], NumberDefault::kNone,
                       [&debugger, arguments](const std::vector<InstanceId>& ids) {
                         for (const InstanceId& id : ids) {
                           const InstanceInfo instance = *debugger.engine().instance(id);
                           if (arguments.size() < 2) {
                             printInstance(debugger, instance);
                           } else if (!printVariable(debugger, instance, arguments[1])) {
                             return CommandEnd::kDone;
                           }
                         }
                         return CommandEnd::kDone;
                       });
}

CommandEnd selectEvent(Debugger& debugger, const Words& /*arguments*/) {
  if (debugger.history().all().empty()) {
    return debugger.answer(kNothingFired);
  }
  return debugger.askChoice("Transition, the last one first:", debugger.history().newestFirst(),
                            [&debugger](const Answer& reply) {
                              const auto& events = debugger.history().all();
                              const InstanceId id =
                                  events[events.size() - 1 - reply.index].transition.instance;
                              debugger.print(reply.text);
                              debugger.print("All of " + formatInstance(id) + ':');
                              return debugger.printList(debugger.history().textOf(id));
                            });
}

}  // namespace tester
