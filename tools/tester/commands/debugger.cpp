#include "tester/commands/debugger.h"

namespace tester {

namespace {

constexpr char kPrompt[] = "> ";

}  // namespace

Debugger::Debugger(Engine& debuggedEngine, Dialogue& userDialogue, const CommandTable& commandTable)
    : system(debuggedEngine), user(userDialogue), table(commandTable), traceLevels(userDialogue) {}

void Debugger::greet() {
  print("Tester of the simulated SDL system \"" + system.systemName() + "\".");
  print(system.description());
  print("\"?\?\" lists the commands, \"help <command>\" explains one.");
  updateTitle();
}

void Debugger::execute(const std::string& command) {
  interrupt();
  openCommand = trimmed(command);
  print(kPrompt + openCommand);
  if (openCommand.empty() || dispatch(openCommand) == CommandEnd::kDone) {
    finish();
  }
}

CommandEnd Debugger::dispatch(const std::string& command) {
  const auto words = splitWords(command);
  if (!words) {
    return answer(words.problem);
  }
  const auto row = table.find(words.value->front());
  if (!row) {
    return answer(row.problem);
  }
  const Words arguments(words.value->begin() + 1, words.value->end());
  const ArgumentCount count = countArguments((*row.value)->arguments);
  if (arguments.size() < count.least || arguments.size() > count.most) {
    return answer((arguments.size() < count.least ? "Too few" : "Too many") +
                  std::string(" arguments. Usage: ") + usageText(**row.value));
  }
  return (*row.value)->function(*this, arguments);
}

CommandEnd Debugger::answer(const std::string& line) {
  print(line);
  return CommandEnd::kDone;
}

CommandEnd Debugger::startRun(RunGoal goal) {
  run.emplace(system, breakpointList, goal, stoppedAt);
  user.showBusy(true);
  return CommandEnd::kOpen;
}

CommandEnd Debugger::restart() {
  system.restart();
  stoppedAt.reset();
  return answer("The system stands at its start again.");
}

void Debugger::runSlice() {
  if (run && !run->runSlice(traceLevels, user)) {
    finishRun();
  }
}

void Debugger::interrupt() {
  interrupted = run.has_value();
  if (!interrupted) {
    return;
  }
  run->interrupt();
  finishRun();
}

void Debugger::finishRun() {
  stoppedAt = run->stoppedAt();
  const std::string reason = run->endText();
  run.reset();
  if (!reason.empty()) {
    user.print(reason);
  }
  user.showBusy(false);
  finish();
}

void Debugger::finish() {
  updateTitle();
  user.confirm(openCommand);
}

void Debugger::updateTitle() {
  user.showTitle(system.systemName() + ", now " + formatTime(system.now()));
}

}  // namespace tester
