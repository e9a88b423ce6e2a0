#include "tester/commands/debugger.h"

#include <utility>

namespace tester {

namespace {

constexpr char kPrompt[] = "> ";

/// By this caption the user interface knows the question that shows its milder icon.
constexpr char kPageCaption[] = "Korvane - Page file";
constexpr char kErrorCaption[] = "Korvane - Dynamic error";
constexpr char kLogCaption[] = "Korvane - Log file";

}  // namespace

Debugger::Debugger(Engine& debuggedEngine, Dialogue& userDialogue, const CommandTable& commandTable)
    : system(debuggedEngine), user(userDialogue), table(commandTable), traceLevels(userDialogue) {}

void Debugger::greet() {
  print("Tester of the simulated SDL system \"" + system.systemName() + "\".");
  print(system.description());
  print("\"?\?\" lists the commands, \"help <command>\" explains one.");
  user.showSystem(sessionData.directory.path(), system.systemName());
  updateTitle();
}

void Debugger::execute(const std::string& command) {
  waitingCommands.push_back(command);
  carryOutWaiting();
}

void Debugger::carryOutWaiting() {
  while (!question && !waitingCommands.empty()) {
    const std::string command = std::move(waitingCommands.front());
    waitingCommands.pop_front();
    carryOut(command);
  }
  if (!question) {
    offerDueSearch();
  }
}

void Debugger::carryOut(const std::string& command) {
  interrupted = false;
  if (!table.keepsRun(trimmed(command))) {
    interrupt();
  }
  openCommand = trimmed(command);
  print(kPrompt + openCommand);
  if (openCommand.empty() || dispatch(openCommand) == CommandEnd::kDone) {
    finish();
  }
}

CommandEnd Debugger::dispatch(const std::string& command) {
  if (const auto line = table.findLineCommand(command)) {
    return line->row->function(*this, line->arguments);
  }
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

void Debugger::takeAnswer(const Answer& reply) {
  if (!question || !question->isAnsweredBy(reply)) {
    if (reply.kind == AnswerKind::kCancelled) {
      takeCancel();
    }
    return;
  }
  // Closed before its handler runs, which may ask the next one.
  const OpenQuestion answered = std::move(*question);
  question.reset();
  const CommandEnd end =
      reply.kind == AnswerKind::kCancelled ? answer("Cancelled.") : answered.answer(reply);
  if (end == CommandEnd::kDone) {
    finish();
  }
  carryOutWaiting();
}

void Debugger::dropQuestion() {
  print("What there is to ask or to tell is too long for a message.");
  if (!question) {
    return;
  }
  question.reset();
  print("The command ends here; it may name what it would have asked for.");
  finish();
  carryOutWaiting();
}

void Debugger::abandonQuestion() {
  question.reset();
  waitingCommands.clear();
  searchIsDue = false;
  searchIsOffered = false;
}

CommandEnd Debugger::askYesNo(const std::string& caption, const std::string& text,
                              AnswerHandler handler) {
  user.askYesNo(caption, text);
  question.emplace(std::vector{AnswerKind::kYes, AnswerKind::kNo}, std::move(handler));
  return CommandEnd::kOpen;
}

CommandEnd Debugger::showError(const std::string& caption, const std::string& text) {
  user.showError(caption, text);
  question.emplace(std::vector{AnswerKind::kAcknowledged},
                   [](const Answer&) { return CommandEnd::kDone; });
  return CommandEnd::kOpen;
}

CommandEnd Debugger::printList(std::string lines) {
  return showPages(PagedList(std::move(lines), pageLength));
}

CommandEnd Debugger::showPages(PagedList list) {
  user.print(list.takePage());
  if (list.isAtEnd()) {
    return CommandEnd::kDone;
  }
  const std::string text = list.progressText() + "\nShow the next page?";
  return askYesNo(kPageCaption, text, [this, list = std::move(list)](const Answer& reply) mutable {
    return reply.kind == AnswerKind::kYes ? showPages(std::move(list)) : answer(list.stoppedText());
  });
}

CommandEnd Debugger::startRun(RunGoal goal) {
  run.emplace(system, breakpointList, firedTransitions, goal, stoppedAt);
  runCommand = openCommand;
  user.showBusy(true);
  return CommandEnd::kOpen;
}

CommandEnd Debugger::restart() {
  system.restart();
  stoppedAt.reset();
  firedTransitions.clear();
  sessionData.marks.clear();
  return answer("The system stands at its start again.");
}

void Debugger::runSlice() {
  if (!isRunning()) {
    return;
  }
  if (run->runSlice(traceLevels, user)) {
    updateTitle();
  } else {
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
  const std::string error = run->errorText();
  run.reset();
  openCommand = runCommand;
  if (!reason.empty()) {
    user.print(reason);
  }
  user.showBusy(false);
  if (error.empty()) {
    finish();
    return;
  }
  updateTitle();
  showError(kErrorCaption, error);
}

void Debugger::finish() {
  updateTitle();
  if (user.log().takeFailure()) {
    user.showWarning(kLogCaption, user.log().name() + " takes no more and is closed.");
  }
  user.confirm(openCommand);
}

void Debugger::updateTitle() {
  const std::string& file = sessionData.symbolFile;
  user.showTitle(system.systemName() + (file.empty() ? "" : " (" + file + ')') + ", " +
                 (run ? "running" : "now " + formatTime(system.now())));
}

}  // namespace tester
