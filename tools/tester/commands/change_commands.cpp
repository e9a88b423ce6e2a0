#include "tester/commands/command_functions.h"
#include "tester/commands/debugger.h"
#include "tester/commands/user_words.h"

namespace tester {

namespace {

/// A timer of an instance, as two words of a command name it.
Lookup<TimerInfo> findTimer(const Engine& engine, const std::string& instanceWord,
                            const std::string& timerWord) {
  const auto owner = findInstance(engine, instanceWord);
  if (!owner) {
    return notFound<TimerInfo>(owner.problem);
  }
  const auto process = findProcess(engine, owner.value->process);
  const auto timer = findName(timerWord, process.value->timers, "timer");
  if (!timer) {
    return notFound<TimerInfo>(timer.problem);
  }
  return found(TimerInfo{*owner.value, *timer.value, 0});
}

}  // namespace

CommandEnd sendSignal(Debugger& debugger, const Words& arguments) {
  const auto signal = findSignal(debugger.engine(), arguments[0]);
  if (!signal) {
    return debugger.answer(signal.problem);
  }
  const auto receiver = findInstance(debugger.engine(), arguments[1]);
  if (!receiver) {
    return debugger.answer(receiver.problem);
  }
  const auto values = readParameters(*signal.value, Words(arguments.begin() + 2, arguments.end()));
  if (!values) {
    return debugger.answer(values.problem);
  }
  if (const Problem problem =
          debugger.engine().send(signal.value->name, *receiver.value, *values.value)) {
    return debugger.answer(*problem);
  }
  debugger.print(signal.value->name + formatParameters(*values.value) + " sent to " +
                 formatInstance(*receiver.value));
  return CommandEnd::kDone;
}

CommandEnd setTimer(Debugger& debugger, const Words& arguments) {
  const auto timer = findTimer(debugger.engine(), arguments[0], arguments[1]);
  if (!timer) {
    return debugger.answer(timer.problem);
  }
  const auto delay = readTime(arguments[2]);
  if (!delay) {
    return debugger.answer(delay.problem);
  }
  if (const Problem problem =
          debugger.engine().setTimer(timer.value->owner, timer.value->name, *delay.value)) {
    return debugger.answer(*problem);
  }
  debugger.print("Timer " + timer.value->name + " of " + formatInstance(timer.value->owner) +
                 " expires at " + formatTime(addTime(debugger.engine().now(), *delay.value)));
  return CommandEnd::kDone;
}

CommandEnd resetTimer(Debugger& debugger, const Words& arguments) {
  const auto timer = findTimer(debugger.engine(), arguments[0], arguments[1]);
  if (!timer) {
    return debugger.answer(timer.problem);
  }
  if (const Problem problem = debugger.engine().resetTimer(timer.value->owner, timer.value->name)) {
    return debugger.answer(*problem);
  }
  debugger.print("Timer " + timer.value->name + " of " + formatInstance(timer.value->owner) +
                 " is reset");
  return CommandEnd::kDone;
}

CommandEnd assignVariable(Debugger& debugger, const Words& arguments) {
  const auto id = findInstance(debugger.engine(), arguments[0]);
  if (!id) {
    return debugger.answer(id.problem);
  }
  const auto variable = findVariable(*debugger.engine().instance(*id.value), arguments[1]);
  if (!variable) {
    return debugger.answer(variable.problem);
  }
  const Sort& sort = variable.value->sort;
  const auto value = parseValue(sort, arguments[2]);
  if (!value) {
    return debugger.answer("Variable " + variable.value->name + " must be " + expectedText(sort) +
                           ", not \"" + arguments[2] + "\".");
  }
  if (const Problem problem = debugger.engine().assign(*id.value, variable.value->name, *value)) {
    return debugger.answer(*problem);
  }
  debugger.print(formatInstance(*id.value) + ' ' + variable.value->name +
                 " := " + formatValue(*value));
  return CommandEnd::kDone;
}

}  // namespace tester
