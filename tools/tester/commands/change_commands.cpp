// Commands that change the system. What a command line leaves out is asked for.

#include "tester/commands/command_functions.h"
#include "tester/commands/debugger.h"
#include "tester/commands/instance_questions.h"
#include "tester/commands/user_words.h"

namespace tester {

namespace {

std::string wordAt(const Words& words, std::size_t index) {
  return index < words.size() ? words[index] : "";
}

/// How a command ends that the user completed by an answer: a problem is shown in a box.
CommandEnd endAfterAnswer(Debugger& debugger, const Problem& problem) {
  return problem ? debugger.refuse(*problem) : CommandEnd::kDone;
}

CommandEnd endAtOnce(Debugger& debugger, const Problem& problem) {
  return problem ? debugger.answer(*problem) : CommandEnd::kDone;
}

Problem deliver(Debugger& debugger, const SignalType& signal, const InstanceId& receiver,
                const Words& words) {
  const auto values = readParameters(signal, words);
  if (!values) {
    return values.problem;
  }
  if (Problem problem = debugger.engine().send(signal.name, receiver, *values.value)) {
    return problem;
  }
  debugger.print(signal.name + formatParameters(*values.value) + " sent to " +
                 formatInstance(receiver));
  return {};
}

CommandEnd askForParameters(Debugger& debugger, const SignalType& signal,
                            const InstanceId& receiver) {
  Words definitions;
  for (const Sort& sort : signal.parameters) {
    definitions.push_back(std::to_string(definitions.size() + 1) + "  " + sort.name + ": " +
                          expectedText(sort));
  }
  return debugger.askParameters(
      "Parameters of " + signal.name + " to " + formatInstance(receiver) + ":", definitions,
      [&debugger, signal, receiver](const Answer& reply) {
        const auto words = splitWords(reply.text);
        return endAfterAnswer(debugger, words ? deliver(debugger, signal, receiver, *words.value)
                                              : Problem(words.problem));
      });
}

CommandEnd sendTo(Debugger& debugger, const SignalType& signal, const std::string& receiverWord,
                  const Words& parameters) {
  return withInstance(debugger, receiverWord,
                      [&debugger, signal, parameters](const InstanceId& receiver) {
                        if (parameters.empty() && !signal.parameters.empty()) {
                          return askForParameters(debugger, signal, receiver);
                        }
                        return endAtOnce(debugger, deliver(debugger, signal, receiver, parameters));
                      });
}

/// A timer of an instance, as a word of a command names it.
Lookup<std::string> findTimer(const Engine& engine, const InstanceId& owner,
                              const std::string& word) {
  return findName(word, findProcess(engine, owner.process).value->timers, "timer");
}

std::string timerText(const std::string& timer, const InstanceId& owner) {
  return "Timer " + timer + " of " + formatInstance(owner);
}

CommandEnd startTimer(Debugger& debugger, const InstanceId& owner, const std::string& timerWord,
                      Time delay) {
  const auto timer = findTimer(debugger.engine(), owner, timerWord);
  if (!timer) {
    return debugger.answer(timer.problem);
  }
  if (const Problem problem = debugger.engine().setTimer(owner, *timer.value, delay)) {
    return debugger.answer(*problem);
  }
  return debugger.answer(timerText(*timer.value, owner) + " expires at " +
                         formatTime(addTime(debugger.engine().now(), delay)));
}

CommandEnd stopTimer(Debugger& debugger, const InstanceId& owner, const std::string& timer) {
  if (const Problem problem = debugger.engine().resetTimer(owner, timer)) {
    return debugger.answer(*problem);
  }
  return debugger.answer(timerText(timer, owner) + " is reset");
}

/// Asks which active timer to stop: of this owner, or of all.
CommandEnd stopChosenTimer(Debugger& debugger, const std::optional<InstanceId>& owner) {
  std::vector<TimerInfo> timers;
  Words items;
  for (const TimerInfo& timer : debugger.engine().timers()) {
    if (!owner || timer.owner == *owner) {
      timers.push_back(timer);
      items.push_back(formatInstance(timer.owner) + "  " + timer.name + "  at " +
                      formatTime(timer.expiry));
    }
  }
  return debugger.askChoice("Timer to stop:", items, [&debugger, timers](const Answer& reply) {
    const TimerInfo& timer = timers[reply.index];
    return stopTimer(debugger, timer.owner, timer.name);
  });
}

Problem change(Debugger& debugger, const InstanceId& id, const Variable& variable,
               const std::string& word) {
  const auto value = parseValue(variable.sort, word);
  if (!value) {
    return "Variable " + variable.name + " must be " + expectedText(variable.sort) + ", not \"" +
           word + "\".";
  }
  if (Problem problem = debugger.engine().assign(id, variable.name, *value)) {
    return problem;
  }
  debugger.print(formatInstance(id) + ' ' + variable.name + " := " + formatValue(*value));
  return {};
}

CommandEnd askForValue(Debugger& debugger, const InstanceId& id, const Variable& variable) {
  const std::string text = "Value of " + variable.name + " of " + formatInstance(id) + ", now " +
                           formatValue(variable.value) + ":\n(" + expectedText(variable.sort) + ')';
  return debugger.askText(text, [&debugger, id, variable](const Answer& reply) {
    return endAfterAnswer(debugger, change(debugger, id, variable, reply.text));
  });
}

CommandEnd askForVariable(Debugger& debugger, const InstanceId& id) {
  const std::vector<Variable> variables = debugger.engine().instance(id)->variables;
  if (variables.empty()) {
    return debugger.answer(formatInstance(id) + " has no variables.");
  }
  Words names;
  for (const Variable& variable : variables) {
    names.push_back(variable.name);
  }
  return debugger.askChoice("Variable of " + formatInstance(id) + ":", names,
                            [&debugger, id, variables](const Answer& reply) {
                              return askForValue(debugger, id, variables[reply.index]);
                            });
}

}  // namespace

CommandEnd sendSignal(Debugger& debugger, const Words& arguments) {
  if (arguments.empty()) {
    const std::vector<SignalType> signals = debugger.engine().signalTypes();
    Words items;
    for (const SignalType& signal : signals) {
      items.push_back(describeSignal(signal));
    }
    return debugger.askChoice("Signal to send:", items, [&debugger, signals](const Answer& reply) {
      return sendTo(debugger, signals[reply.index], "", {});
    });
  }
  const auto signal = findSignal(debugger.engine(), arguments[0]);
  if (!signal) {
    return debugger.answer(signal.problem);
  }
  const Words parameters =
      arguments.size() > 2 ? Words(arguments.begin() + 2, arguments.end()) : Words{};
  return sendTo(debugger, *signal.value, wordAt(arguments, 1), parameters);
}

CommandEnd setTimer(Debugger& debugger, const Words& arguments) {
  const auto delay = readTime(arguments[2]);
  if (!delay) {
    return debugger.answer(delay.problem);
  }
  return withInstance(
      debugger, arguments[0],
      [&debugger, timer = arguments[1], delay = *delay.value](const InstanceId& owner) {
        return startTimer(debugger, owner, timer, delay);
      });
}

CommandEnd resetTimer(Debugger& debugger, const Words& arguments) {
  if (arguments.empty()) {
    return stopChosenTimer(debugger, {});
  }
  return withInstance(
      debugger, arguments[0], [&debugger, word = wordAt(arguments, 1)](const InstanceId& owner) {
        if (word.empty()) {
          return stopChosenTimer(debugger, owner);
        }
        const auto timer = findTimer(debugger.engine(), owner, word);
        return timer ? stopTimer(debugger, owner, *timer.value) : debugger.answer(timer.problem);
      });
}

CommandEnd assignVariable(Debugger& debugger, const Words& arguments) {
  return withInstance(debugger, wordAt(arguments, 0), [&debugger, arguments](const InstanceId& id) {
    if (arguments.size() < 2) {
      return askForVariable(debugger, id);
    }
    const auto variable = findVariable(*debugger.engine().instance(id), arguments[1]);
    if (!variable) {
      return debugger.answer(variable.problem);
    }
    return arguments.size() == 2
               ? askForValue(debugger, id, *variable.value)
               : endAtOnce(debugger, change(debugger, id, *variable.value, arguments[2]));
  });
}

}  // namespace tester
