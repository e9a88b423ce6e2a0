#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tester/words.h"

/// The table of the commands, and what they do: one function each. The count of arguments has been
/// checked; what they mean has not.
namespace tester {

class Debugger;

/// `arguments` is what the user reads and what the count of arguments is checked against:
/// "<instance> [<variable>]"; "..." after the last one allows more of them.
struct CommandRow {
  std::string_view name;
  std::string_view arguments;
  std::string_view summary;  ///< for the list of commands
  void (*function)(Debugger&, const Words& arguments) = nullptr;
  enum Trait {
    kPlain,
    kBesideRun,  ///< carried out beside a run, which others end
    kTakesLine,  ///< the rest of the line is one argument: the name of a file
  } trait = kPlain;
};

std::span<const CommandRow> allCommands();

/// The row that the word names or abbreviates; throws a Refusal.
const CommandRow& findCommand(std::string_view word);

/// The least and the most arguments that a row's description allows.
std::pair<std::size_t, std::size_t> countArguments(std::string_view description);

/// "name <argument>"
std::string usageText(const CommandRow& row);

// list_commands.cpp
void listCommands(Debugger& debugger, const Words& arguments);
void listProcesses(Debugger& debugger, const Words& arguments);
void listQueues(Debugger& debugger, const Words& arguments);
void listTimers(Debugger& debugger, const Words& arguments);
void listSignals(Debugger& debugger, const Words& arguments);
void listReady(Debugger& debugger, const Words& arguments);
void listDefinitions(Debugger& debugger, const Words& arguments);
void listBreakpoints(Debugger& debugger, const Words& arguments);
void listTrace(Debugger& debugger, const Words& arguments);
void showInstance(Debugger& debugger, const Words& arguments);
void showNow(Debugger& debugger, const Words& arguments);

// run_commands.cpp
void nextTransition(Debugger& debugger, const Words& arguments);
void go(Debugger& debugger, const Words& arguments);
void proceedUntil(Debugger& debugger, const Words& arguments);
void stopRun(Debugger& debugger, const Words& arguments);
void restartSystem(Debugger& debugger, const Words& arguments);
void setBreakpoint(Debugger& debugger, const Words& arguments);
void removeBreakpoint(Debugger& debugger, const Words& arguments);
void setTrace(Debugger& debugger, const Words& arguments);
void maskTrace(Debugger& debugger, const Words& arguments);

// change_commands.cpp
void sendSignal(Debugger& debugger, const Words& arguments);
void assignVariable(Debugger& debugger, const Words& arguments);
void setPageLength(Debugger& debugger, const Words& arguments);
void changeDirectory(Debugger& debugger, const Words& arguments);
void openSystem(Debugger& debugger, const Words& arguments);
void exitTester(Debugger& debugger, const Words& arguments);
void quitTester(Debugger& debugger, const Words& arguments);

/// Which instances a command takes when the user names a process that has several.
enum class Wanted {
  kOne,  ///< he has to say which
  kAny,  ///< he has to say which, or all
  kAll,  ///< all, without asking him
};

/// Goes on with the living instances that `word` means (instance_question.cpp). An empty one asks
/// for one of all.
void withInstances(Debugger& debugger, const std::string& word, Wanted wanted,
                   const std::function<void(const std::vector<InstanceId>&)>& handler);

}  // namespace tester
