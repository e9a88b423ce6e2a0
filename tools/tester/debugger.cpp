#include "tester/debugger.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

#include "support/text.h"
#include "tester/commands.h"
#include "tester_link/button_folder.h"

namespace tester {

namespace {

namespace fs = std::filesystem;

using tester_link::Answer;
using tester_link::AnswerKind;

/// By this caption the user interface knows the question that shows its milder icon.
constexpr char kPageCaption[] = "Korvane - Page file";
constexpr char kErrorCaption[] = "Korvane - Dynamic error";
constexpr char kRefusedCaption[] = "Korvane - Refused";
constexpr char kRestartCaption[] = "Korvane - Restart";

constexpr std::string_view kSystemWord = "system ";

/// The name of the system that a symbol file describes: its first line says "system <name>".
std::string readSymbolFile(const fs::path& path) {
  std::error_code error;
  std::string line;
  // A pipe or a device could hold up the tester.
  if (!fs::is_regular_file(path, error) || !std::getline(std::ifstream(path), line)) {
    throw Refusal{"The file " + path.string() + " cannot be read."};
  }
  if (!line.starts_with(kSystemWord)) {
    throw Refusal{path.string() + " is no symbol file: it does not begin with \"system <name>\"."};
  }
  return trimmed(line.substr(kSystemWord.size()));
}

}  // namespace

Debugger::Debugger(SimulatedSystem& debuggedSystem, tester_link::UserLink& userLink)
    : simulated(debuggedSystem), link(userLink), sourceDirectory(fs::current_path().string()) {}

void Debugger::greet() {
  print("Tester of the simulated SDL system \"" + simulated.definition().name + "\".");
  print(simulated.definition().description);
  print("\"?\?\" lists the commands.");
  showSystem();
  updateTitle();
}

/// Where the directory has no buttons, the window gets those of the crossing instead of asking for
/// a file; where there are none either, it stays as it is.
void Debugger::showSystem() {
  const std::string folder = tester_link::hasButtons(sourceDirectory)
                                 ? sourceDirectory
                                 : tester_link::usualButtonFolder("crossing");
  if (!folder.empty()) {
    link.showSystem(folder, simulated.definition().name);
  }
}

void Debugger::search() {
  tester_link::SearchLists lists{
      namesOf(simulated.definition().processes), namesOf(simulated.definition().signalTypes), {}};
  for (const ProcessType& process : simulated.definition().processes) {
    for (const std::string& timer : process.timers) {
      if (std::find(lists.timers.begin(), lists.timers.end(), timer) == lists.timers.end()) {
        lists.timers.push_back(timer);
      }
    }
  }
  link.offerSearch(std::move(lists));
}

void Debugger::takeCommand(const std::string& command) {
  const Words words = splitWords(command);
  const CommandRow* row = nullptr;
  std::string problem;
  try {
    row = words.empty() ? nullptr : &findCommand(words.front());
  } catch (const Refusal& refusal) {
    problem = refusal.text + " \"?\?\" lists the commands.";
  }
  interrupted = false;
  if (row == nullptr || row->trait != CommandRow::kBesideRun) {
    interrupt();
  }
  openCommand = trimmed(command);
  print("> " + openCommand);
  goOn([&](const Answer&) {
    if (row != nullptr) {
      carryOut(*row, words);
    } else if (!problem.empty()) {
      print(problem);
    }
  })({});
}

/// Ends the command after the handler, unless that asked or began a run.
Debugger::AnswerHandler Debugger::goOn(AnswerHandler handler) {
  return [this, handler = std::move(handler)](const Answer& answer) {
    startedRun = false;
    handler(answer);
    if (!link.isAsking() && !startedRun) {
      finish();
    }
  };
}

Debugger::AnswerHandler Debugger::then(AnswerHandler handler) {
  return goOn([this, handler = std::move(handler)](const Answer& answer) {
    if (answer.kind == AnswerKind::kWrong) {
      refuse(answer.text);
    } else if (answer.kind == AnswerKind::kCancelled) {
      print("Cancelled.");
    } else if (answer.kind == AnswerKind::kTooLong) {
      print("The command ends here; it may name what it would have asked for.");
    } else {
      try {
        handler(answer);
      } catch (const Refusal& refusal) {
        refuse(refusal.text);
      }
    }
  });
}

void Debugger::carryOut(const CommandRow& row, const Words& words) {
  const std::string line = trimmed(openCommand.substr(words.front().size()));
  Words arguments(words.begin() + 1, words.end());
  if (row.trait == CommandRow::kTakesLine && !line.empty()) {
    arguments = {line};
  }
  const auto [least, most] = countArguments(row.arguments);
  if (arguments.size() < least || arguments.size() > most) {
    print((arguments.size() < least ? "Too few" : "Too many") + std::string(" arguments. Usage: ") +
          usageText(row));
    return;
  }
  try {
    row.function(*this, arguments);
  } catch (const Refusal& refusal) {
    print(refusal.text);
  }
}

void Debugger::refuse(const std::string& problem) {
  print(problem);
  link.showError(kRefusedCaption, problem, goOn([](const Answer&) {}));
}

void Debugger::printList(const std::string& lines, const std::string& otherwise) {
  const auto total = static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n'));
  if (total == 0) {
    print(otherwise);
    return;
  }
  if (pageLength == 0 || total <= pageLength) {
    link.print(lines);
    return;
  }
  std::size_t end = 0;
  for (std::size_t i = 0; i < pageLength; ++i) {
    end = lines.find('\n', end) + 1;
  }
  link.print(lines.substr(0, end));
  const std::string rest = std::to_string(total - pageLength);
  link.askYesNo(kPageCaption, "More lines: " + rest + ".\nShow the next page?",
                then([this, rest, more = lines.substr(end)](const Answer& answer) {
                  if (answer.kind == AnswerKind::kYes) {
                    printList(more);
                  } else {
                    print("Stopped; lines not shown: " + rest + '.');
                  }
                }));
}

int Debugger::addBreakpoint(Breakpoint breakpoint) {
  for (const Breakpoint& each : breakpointList) {
    if (each.text() == breakpoint.text()) {
      return each.number;
    }
  }
  breakpoint.number = ++lastBreakpoint;
  breakpointList.push_back(std::move(breakpoint));
  return lastBreakpoint;
}

void Debugger::startRun(RunGoal goal) {
  run.emplace(simulated, breakpointList, goal, stoppedAt);
  runCommand = openCommand;
  startedRun = true;
  link.showBusy(true);
}

void Debugger::restart() {
  std::size_t signals = 0;
  for (const ProcessInstance* instance : simulated.instances()) {
    signals += instance->queue.size();
  }
  simulated.restart();
  stoppedAt.reset();
  print("The system stands at its start again.");
  if (signals != 0) {
    link.showWarning(kRestartCaption,
                     "Lost by the restart: " + countedThings(signals, "queued signal") + '.');
  }
}

void Debugger::changeDirectory(const std::string& name) {
  const fs::path wanted = (fs::path(sourceDirectory) / name / "").lexically_normal();
  std::error_code error;
  if (!fs::is_directory(wanted, error)) {
    throw Refusal{wanted.string() + " is no directory."};
  }
  sourceDirectory = wanted == wanted.root_path() ? wanted.string() : wanted.parent_path().string();
}

void Debugger::openSystem(const std::string& fileName) {
  const fs::path path = fs::path(sourceDirectory) / fileName;
  const std::string& name = simulated.definition().name;
  const std::string described = readSymbolFile(path);
  if (!equalIgnoringCase(described, name)) {
    throw Refusal{path.string() + " describes the system \"" + described +
                  "\".\nThis tester simulates \"" + name + "\" alone."};
  }
  changeDirectory(path.parent_path().string());
  symbolFile = path.filename().string();
  print("System \"" + name + "\" opened from " + path.string() + '.');
  showSystem();
  restart();
}

void Debugger::work() {
  if (run->runSlice(traceSettings, link)) {
    updateTitle();
  } else {
    finishRun();
  }
}

void Debugger::interrupt() {
  interrupted = run.has_value();
  if (interrupted) {
    run->interrupt();
    finishRun();
  }
}

void Debugger::finishRun() {
  stoppedAt = run->stoppedAt();
  const std::string error = run->errorText();
  link.print(run->endText());
  run.reset();
  openCommand = runCommand;
  link.showBusy(false);
  if (error.empty()) {
    finish();
    return;
  }
  updateTitle();
  link.showError(kErrorCaption, error, goOn([](const Answer&) {}));
}

void Debugger::finish() {
  updateTitle();
  link.confirm(openCommand);
}

void Debugger::updateTitle() {
  link.showTitle(simulated.definition().name + (symbolFile.empty() ? "" : " (" + symbolFile + ')') +
                 ", " + (run ? "running" : "now " + formatTime(simulated.now())));
}

}  // namespace tester
