// Commands that change the system or the tester. What a command line leaves out is asked for.

#include "tester/commands.h"
#include "tester/debugger.h"

namespace tester {

namespace {

using tester_link::Answer;
using tester_link::UserLink;

void deliver(Debugger& debugger, const SignalType& signal, const InstanceId& receiver,
             const Words& words) {
  const std::vector<Value> values = readParameters(signal, words);
  debugger.system().deliver(receiver, {signal.name, values});
  debugger.print(signal.name + formatParameters(values) + " sent to " + formatInstance(receiver));
}

void sendTo(Debugger& debugger, const SignalType& signal, const InstanceId& receiver,
            const Words& parameters) {
  if (!parameters.empty() || signal.parameters.empty()) {
    deliver(debugger, signal, receiver, parameters);
    return;
  }
  Words definitions;
  for (const Sort& sort : signal.parameters) {
    definitions.push_back(std::to_string(definitions.size() + 1) + "  " + sort.name + ": " +
                          expectedText(sort));
  }
  debugger.user().askParameters(
      "Parameters of " + signal.name + " to " + formatInstance(receiver) + ":", definitions,
      debugger.then([&debugger, &signal, receiver](const Answer& answer) {
        deliver(debugger, signal, receiver, splitWords(answer.text));
      }));
}

void sendSignalOf(Debugger& debugger, const SignalType& signal, const Words& arguments) {
  const Words parameters(arguments.begin() + std::min<std::ptrdiff_t>(2, std::ssize(arguments)),
                         arguments.end());
  withInstances(debugger, arguments.size() < 2 ? "" : arguments[1], Wanted::kOne,
                [&debugger, &signal, parameters](const std::vector<InstanceId>& ids) {
                  sendTo(debugger, signal, ids.front(), parameters);
                });
}

void assign(Debugger& debugger, const InstanceId& id, const Variable& variable,
            const std::string& word) {
  const auto value = parseValue(variable.sort, word);
  if (!value) {
    throw Refusal{"Variable " + variable.name + " must be " + expectedText(variable.sort) +
                  ", not \"" + word + "\"."};
  }
  *debugger.system().find(id)->variable(variable.name) = *value;
  debugger.print(formatInstance(id) + ' ' + variable.name + " := " + *value);
}

void assignAnswer(Debugger& debugger, const InstanceId& id, const Variable& variable) {
  debugger.user().askText("Value of " + variable.name + " of " + formatInstance(id) + ", now " +
                              *debugger.system().find(id)->variable(variable.name) + ":\n(" +
                              expectedText(variable.sort) + ')',
                          debugger.then([&debugger, id, &variable](const Answer& answer) {
                            assign(debugger, id, variable, answer.text);
                          }));
}

void assignOf(Debugger& debugger, const InstanceId& id, const Words& arguments) {
  const std::vector<Variable>& variables = debugger.system().find(id)->type->variables;
  if (arguments.size() < 2) {
    debugger.user().askChoice("Variable of " + formatInstance(id) + ":", namesOf(variables),
                              debugger.then([&debugger, id, &variables](const Answer& answer) {
                                assignAnswer(debugger, id, variables[answer.index]);
                              }));
    return;
  }
  const std::string name = findName(arguments[1], namesOf(variables), "variable");
  for (const Variable& variable : variables) {
    if (variable.name == name && arguments.size() == 2) {
      assignAnswer(debugger, id, variable);
    } else if (variable.name == name) {
      assign(debugger, id, variable, arguments[2]);
    }
  }
}

}  // namespace

void sendSignal(Debugger& debugger, const Words& arguments) {
  const std::vector<SignalType>& signals = debugger.system().definition().signalTypes;
  if (arguments.empty()) {
    Words items;
    for (const SignalType& signal : signals) {
      items.push_back(describeSignal(signal));
    }
    debugger.user().askChoice("Signal to send:", items,
                              debugger.then([&debugger, &signals](const Answer& answer) {
                                sendSignalOf(debugger, signals[answer.index], {});
                              }));
    return;
  }
  sendSignalOf(debugger, findSignal(debugger.system(), arguments[0]), arguments);
}

void assignVariable(Debugger& debugger, const Words& arguments) {
  withInstances(debugger, arguments.empty() ? "" : arguments[0], Wanted::kOne,
                [&debugger, arguments](const std::vector<InstanceId>& ids) {
                  assignOf(debugger, ids.front(), arguments);
                });
}

void setPageLength(Debugger& debugger, const Words& arguments) {
  debugger.setPageLength(static_cast<std::size_t>(readCount(arguments[0], 0)));
}

void changeDirectory(Debugger& debugger, const Words& arguments) {
  const auto change = [&debugger](const Answer& answer) {
    debugger.changeDirectory(answer.text);
    debugger.print("Source directory: " + debugger.directory());
  };
  if (arguments.empty()) {
    debugger.user().askDirectory(debugger.directory(), debugger.then(change));
  } else {
    change({.text = arguments[0]});
  }
}

void openSystem(Debugger& debugger, const Words& arguments) {
  const auto open = [&debugger](const Answer& answer) { debugger.openSystem(answer.text); };
  if (arguments.empty()) {
    debugger.user().askFile({"Open Symbol File", "sym", "Symbol Files (*.sym)"},
                            debugger.directory(), debugger.then(open));
  } else {
    open({.text = arguments[0]});
  }
}

void exitTester(Debugger& debugger, const Words& /*arguments*/) {
  debugger.user().askToLeave(UserLink::Leave::kAfterSaving);
}

void quitTester(Debugger& debugger, const Words& /*arguments*/) {
  debugger.user().askToLeave(UserLink::Leave::kAtOnce);
}

}  // namespace tester
