#include <algorithm>
#include <array>
#include <cstdint>

#include "support/text.h"
#include "tester/commands.h"

namespace tester {

namespace {

constexpr auto kBesideRun = CommandRow::kBesideRun;
constexpr auto kTakesLine = CommandRow::kTakesLine;

// The order is that of the list that the user sees.
constexpr std::array kRows = {
    CommandRow{"?\?", "", "Lists all commands", listCommands, kBesideRun},
    CommandRow{"list-process", "[<process>]", "Lists the living process instances", listProcesses,
               kBesideRun},
    CommandRow{"list-queue", "[<instance>]", "Lists the signals in the input queues", listQueues,
               kBesideRun},
    CommandRow{"list-timer", "", "Lists the active timers", listTimers, kBesideRun},
    CommandRow{"list-signal", "", "Lists the signals with their parameters", listSignals,
               kBesideRun},
    CommandRow{"list-ready", "", "Lists the transitions that are ready now", listReady, kBesideRun},
    CommandRow{"list-definition", "", "Lists the process types, their states and inputs",
               listDefinitions, kBesideRun},
    CommandRow{"list-breakpoint", "", "Lists the breakpoints", listBreakpoints, kBesideRun},
    CommandRow{"list-trace", "", "Shows how much runs tell", listTrace, kBesideRun},
    CommandRow{"show-instance", "[<instance>]", "Shows an instance, its timers and variables",
               showInstance, kBesideRun},
    CommandRow{"now", "", "Shows the virtual time in seconds", showNow, kBesideRun},
    CommandRow{"next-transition", "[<count>]", "Fires the next transition, or so many",
               nextTransition},
    CommandRow{"go", "", "Runs until a breakpoint, an error or nothing is left to do", go},
    CommandRow{"proceed-until", "<time>", "Runs until the time in seconds, or a breakpoint",
               proceedUntil},
    CommandRow{"stop", "", "Ends a run, as any command does that changes something", stopRun},
    CommandRow{"restart", "", "Begins anew; breakpoints and trace stay", restartSystem},
    CommandRow{"send", "[<signal> [<instance> [<parameter>...]]]",
               "Sends a signal from the environment", sendSignal, kBesideRun},
    CommandRow{"assign-variable", "[<instance> [<variable> [<value>]]]", "Changes a variable",
               assignVariable},
    CommandRow{"set-breakpoint", "<process> [<state> [<signal>]]",
               "Stops runs before a transition; * stands for any", setBreakpoint},
    CommandRow{"remove-breakpoint", "[<number>]", "Removes a breakpoint, or with * all",
               removeBreakpoint},
    CommandRow{"set-trace", "<level>",
               "0 nothing, 1 transitions, 2 also signals, 3 also timers and tasks", setTrace},
    CommandRow{"mask-trace", "[<process>...]", "Traces these processes only, or with * all",
               maskTrace},
    CommandRow{"set-page-length", "<lines>",
               "Sets after how many lines a list asks to go on; 0 never", setPageLength},
    CommandRow{"change-directory", "[<directory>]",
               "Changes the directory in which names of files begin", changeDirectory, kTakesLine},
    CommandRow{"system", "[<file>]", "Opens a system by its symbol file", openSystem, kTakesLine},
    CommandRow{"exit", "", "Ends tester and user interface, after asking to save", exitTester},
    CommandRow{"quit", "", "Ends tester and user interface at once", quitTester},
};

}  // namespace

std::span<const CommandRow> allCommands() {
  return kRows;
}

const CommandRow& findCommand(std::string_view word) {
  Words names;
  for (const CommandRow& row : kRows) {
    names.emplace_back(row.name);
  }
  const std::string name = findName(word, names, "command");
  return *std::find_if(kRows.begin(), kRows.end(),
                       [&name](const CommandRow& row) { return row.name == name; });
}

std::pair<std::size_t, std::size_t> countArguments(std::string_view description) {
  std::size_t least = 0;
  std::size_t most = 0;
  bool isOptional = false;
  for (const char character : description) {
    isOptional = isOptional || character == '[';
    most += character == '<' ? 1 : 0;
    least += character == '<' && !isOptional ? 1 : 0;
  }
  return {least, description.find("...") == std::string_view::npos ? most : SIZE_MAX};
}

std::string usageText(const CommandRow& row) {
  return trimmed(std::string(row.name) + ' ' + std::string(row.arguments));
}

}  // namespace tester
