// Commands that only look.

#include "tester/commands.h"
#include "tester/debugger.h"

namespace tester {

namespace {

constexpr char kIndent[] = "  ";

/// The queue in lines; empty when it is.
std::string queueText(const ProcessInstance& instance) {
  std::vector<Words> rows;
  for (const QueuedSignal& signal : instance.queue) {
    const std::string sender = signal.sender.isNull() ? "env" : formatInstance(signal.sender);
    rows.push_back({signal.name + formatParameters(signal.parameters),
                    signal.isTimer ? "timer" : "from " + sender,
                    instance.type->keeps(instance.state, signal.name) ? "saved" : ""});
  }
  return rows.empty() ? ""
                      : formatInstance(instance.id) + " in " + instance.state + ":\n" +
                            columnText(rows, kIndent);
}

std::string instanceText(const SimulatedSystem& system, const ProcessInstance& instance) {
  std::string lines = "Instance " + formatInstance(instance.id) + " in " + instance.state +
                      "\n  parent " + formatInstance(instance.parent) + ", offspring " +
                      formatInstance(instance.offspring) + ", sender " +
                      formatInstance(instance.sender) + ", queue " +
                      std::to_string(instance.queue.size()) + '\n';
  for (const TimerInfo& timer : system.timers()) {
    if (timer.owner == instance.id) {
      lines += "  timer " + timer.name + " at " + formatTime(timer.expiry) + '\n';
    }
  }
  std::vector<Words> rows;
  for (std::size_t i = 0; i < instance.variables.size(); ++i) {
    const Variable& variable = instance.type->variables[i];
    rows.push_back({variable.name, variable.sort.name, instance.variables[i]});
  }
  return lines + columnText(rows, kIndent);
}

}  // namespace

void listCommands(Debugger& debugger, const Words& /*arguments*/) {
  std::vector<Words> rows;
  for (const CommandRow& row : allCommands()) {
    rows.push_back({usageText(row), std::string(row.summary)});
  }
  debugger.printList(columnText(rows, kIndent) +
                     "Names may be abbreviated as far as they stay unique. Words in brackets may "
                     "be left out;\nwhat is needed then is asked for.\n");
}

void listProcesses(Debugger& debugger, const Words& arguments) {
  const std::string only =
      arguments.empty() ? "" : findProcess(debugger.system(), arguments[0]).name;
  std::vector<Words> rows;
  for (const ProcessInstance* instance : debugger.system().instances()) {
    if (only.empty() || instance->id.process == only) {
      rows.push_back({formatInstance(instance->id), instance->state,
                      "queue " + std::to_string(instance->queue.size())});
    }
  }
  debugger.printList(columnText(rows), "No living instance.");
}

void listQueues(Debugger& debugger, const Words& arguments) {
  const auto list = [&debugger](const std::vector<InstanceId>& ids) {
    std::string lines;
    for (const InstanceId& id : ids) {
      lines += queueText(*debugger.system().find(id));
    }
    debugger.printList(lines, "All queues are empty.");
  };
  if (arguments.empty()) {
    list(livingInstances(debugger.system(), ""));
  } else {
    withInstances(debugger, arguments[0], Wanted::kAll, list);
  }
}

void listTimers(Debugger& debugger, const Words& /*arguments*/) {
  std::vector<Words> rows;
  for (const TimerInfo& timer : debugger.system().timers()) {
    rows.push_back({formatInstance(timer.owner), timer.name, "at " + formatTime(timer.expiry)});
  }
  debugger.printList(columnText(rows), "No timer is active.");
}

void listSignals(Debugger& debugger, const Words& /*arguments*/) {
  std::string lines;
  for (const SignalType& signal : debugger.system().definition().signalTypes) {
    lines += describeSignal(signal) + '\n';
  }
  debugger.printList(lines);
}

void listReady(Debugger& debugger, const Words& /*arguments*/) {
  std::vector<Words> rows;
  for (const PendingTransition& transition : debugger.system().ready()) {
    rows.push_back({formatInstance(transition.instance), transition.state, transition.input});
  }
  debugger.printList(columnText(rows),
                     "No transition is ready; the next timer has to expire first.");
}

void listDefinitions(Debugger& debugger, const Words& /*arguments*/) {
  std::string lines;
  for (const ProcessType& type : debugger.system().definition().processes) {
    lines += type.name + ", at most " + std::to_string(type.maximumInstances) +
             "\n  states: " + joinNames(type.states) + "\n  inputs: " + joinNames(type.inputs()) +
             '\n';
  }
  debugger.printList(lines);
}

void listBreakpoints(Debugger& debugger, const Words& /*arguments*/) {
  std::vector<Words> rows;
  for (const Breakpoint& breakpoint : debugger.breakpoints()) {
    rows.push_back({std::to_string(breakpoint.number), breakpoint.text()});
  }
  debugger.printList(columnText(rows), "No breakpoint is set.");
}

void listTrace(Debugger& debugger, const Words& /*arguments*/) {
  const auto& mask = debugger.trace().mask;
  debugger.print("Trace level " + std::to_string(static_cast<int>(debugger.trace().level)) +
                 ", processes: " + (mask ? joinNames({mask->begin(), mask->end()}) : "all"));
}

void showInstance(Debugger& debugger, const Words& arguments) {
  withInstances(debugger, arguments.empty() ? "" : arguments[0], Wanted::kAny,
                [&debugger](const std::vector<InstanceId>& ids) {
                  std::string lines;
                  for (const InstanceId& id : ids) {
                    lines += instanceText(debugger.system(), *debugger.system().find(id));
                  }
                  debugger.printList(lines);
                });
}

void showNow(Debugger& debugger, const Words& /*arguments*/) {
  debugger.print("now = " + formatTime(debugger.system().now()));
}

}  // namespace tester
