// Commands about files, directories and marks: what the tester keeps besides the system.

#include <filesystem>

#include "tester/commands/command_functions.h"
#include "tester/commands/debugger.h"

namespace tester {

namespace {

constexpr char kOpenCaption[] = "Korvane - Open system";

/// With a word, goes on with it, otherwise with what `ask` brings.
CommandEnd withWord(const Words& arguments, const AnswerHandler& handler,
                    CommandEnd (*ask)(Debugger&, AnswerHandler), Debugger& debugger) {
  return arguments.empty() ? ask(debugger, handler)
                           : handler({AnswerKind::kText, arguments.front()});
}

CommandEnd askForMark(Debugger& debugger, AnswerHandler handler) {
  return debugger.askText("Name of the mark at " + formatTime(debugger.engine().now()) + ":",
                          std::move(handler));
}

CommandEnd askForLog(Debugger& debugger, AnswerHandler handler) {
  return debugger.askFile({"Open Log File", "log", "Log Files (*.log)"}, std::move(handler));
}

CommandEnd askForSystem(Debugger& debugger, AnswerHandler handler) {
  return debugger.askFile({"Open Symbol File", "sym", "Symbol Files (*.sym)"}, std::move(handler));
}

CommandEnd askForDirectory(Debugger& debugger, AnswerHandler handler) {
  return debugger.askDirectory(std::move(handler));
}

/// The log keeps what the box says.
CommandEnd refuseSystem(Debugger& debugger, const std::string& problem) {
  debugger.print(problem);
  return debugger.showError(kOpenCaption, problem);
}

std::string closedLogText(const OutputLog& log) {
  return "Log file " + log.name() + " is closed.";
}

CommandEnd openLogNamed(Debugger& debugger, const std::string& name) {
  OutputLog& log = debugger.dialogue().log();
  const std::string before = log.isOpen() ? closedLogText(log) : "";
  if (const Problem problem = log.open(debugger.session().directory.resolve(name))) {
    return debugger.refuse(*problem);
  }
  if (!before.empty()) {
    debugger.print(before);
  }
  return debugger.answer("All output is copied to the log file " + log.name() + '.');
}

/// The system of the file begins anew, in its directory.
CommandEnd openSystemNamed(Debugger& debugger, const std::string& name) {
  const std::filesystem::path path = debugger.session().directory.resolve(name);
  const auto system = readSymbolFile(path.string());
  if (!system) {
    return refuseSystem(debugger, system.problem);
  }
  const std::string simulated = debugger.engine().systemName();
  if (!equalIgnoringCase(*system.value, simulated)) {
    return refuseSystem(debugger, path.string() + " describes the system \"" + *system.value +
                                      "\".\nThis tester simulates \"" + simulated + "\" alone.");
  }
  if (const Problem problem = debugger.session().directory.change(path.parent_path().string())) {
    return refuseSystem(debugger, *problem);
  }
  debugger.session().symbolFile = path.filename().string();
  debugger.print("System \"" + simulated + "\" opened from " + path.string() + '.');
  debugger.dialogue().showSystem(debugger.session().directory.path(), simulated);
  return debugger.restart();
}

}  // namespace

CommandEnd addMark(Debugger& debugger, const Words& arguments) {
  const auto add = [&debugger](const Answer& reply) {
    const Time now = debugger.engine().now();
    const Problem problem = debugger.session().marks.add(reply.text, now);
    return problem ? debugger.refuse(*problem)
                   : debugger.answer("Mark \"" + trimmed(reply.text) + "\" at " + formatTime(now));
  };
  return withWord(arguments, add, askForMark, debugger);
}

CommandEnd listMarks(Debugger& debugger, const Words& /*arguments*/) {
  const std::string lines = debugger.session().marks.text();
  return lines.empty() ? debugger.answer("There is no mark.") : debugger.printList(lines);
}

CommandEnd openLog(Debugger& debugger, const Words& arguments) {
  const auto open = [&debugger](const Answer& reply) { return openLogNamed(debugger, reply.text); };
  return withWord(arguments, open, askForLog, debugger);
}

CommandEnd closeLog(Debugger& debugger, const Words& /*arguments*/) {
  OutputLog& log = debugger.dialogue().log();
  if (!log.isOpen()) {
    return debugger.answer("No log file is open.");
  }
  log.close();
  return debugger.answer(closedLogText(log));
}

CommandEnd openSystem(Debugger& debugger, const Words& arguments) {
  const auto open = [&debugger](const Answer& reply) {
    return openSystemNamed(debugger, reply.text);
  };
  return withWord(arguments, open, askForSystem, debugger);
}

CommandEnd changeDirectory(Debugger& debugger, const Words& arguments) {
  const auto change = [&debugger](const Answer& reply) {
    SourceDirectory& directory = debugger.session().directory;
    const Problem problem = directory.change(reply.text);
    return problem ? debugger.refuse(*problem)
                   : debugger.answer("Source directory: " + directory.path());
  };
  return withWord(arguments, change, askForDirectory, debugger);
}

}  // namespace tester
