#include "gdb/process/debugger_process.h"

#include <unistd.h>

#include <csignal>
#include <string_view>

namespace gdb {

namespace {

/// How long GDB may take to end when its terminal is gone, and when it is told to end besides,
/// which also ends a script of Python's.
constexpr std::chrono::milliseconds kEndTime{250};
constexpr std::chrono::milliseconds kToldEndTime{450};

/// What is changed in the environment.
constexpr std::string_view kChangedVariables[] = {
    "TERM=", "LC_ALL=", "LANGUAGE=", "PS2="};  // the prompt of GDB's menus

std::vector<std::string> argumentsFor(const std::string& machine, bool readsInitFiles) {
  std::vector<std::string> words = {"-q"};
  if (!readsInitFiles) {
    words.emplace_back("-nx");
  }
  for (const char* setting :
       {"set width 0", "set height 0", "set pagination off", "set editing off", "set prompt",
        "set style enabled off", "set debuginfod enabled off"}) {
    words.insert(words.end(), {"-iex", setting});
  }
  words.insert(words.end(), {"-ex", "new-ui mi3 " + machine});
  return words;
}

}  // namespace

std::vector<std::string> debuggerEnvironment() {
  std::vector<std::string> variables;
  for (char** each = environ; *each != nullptr; ++each) {
    const std::string_view variable = *each;
    bool isKept = true;
    for (const std::string_view changed : kChangedVariables) {
      isKept = isKept && !variable.starts_with(changed);
    }
    if (isKept) {
      variables.emplace_back(variable);
    }
  }
  variables.insert(variables.end(), {"TERM=dumb", "LC_ALL=C.UTF-8"});
  return variables;
}

DebuggerProcess::DebuggerProcess(const std::string& program, bool readsInitFiles)
    : consolePty(openPty(PtyUse::kConsole)),
      machinePty(openPty(PtyUse::kMachine)),
      programPty(openPty(PtyUse::kProgram)) {
  process.emplace(Launch{program, argumentsFor(machinePty.name, readsInitFiles),
                         debuggerEnvironment(), consolePty.name});
  consolePty.slave.close();
  consoleEnd.emplace(std::move(consolePty.master));
  machineEnd.emplace(std::move(machinePty.master));
  programEnd.emplace(std::move(programPty.master));
}

DebuggerProcess::~DebuggerProcess() {
  consoleEnd.reset();
  machineEnd.reset();
  programEnd.reset();
  if (process && !process->waitForEnd(kEndTime)) {
    process->signal(SIGTERM);
    process->waitForEnd(kToldEndTime);
  }
}

}  // namespace gdb
