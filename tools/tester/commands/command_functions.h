#pragma once

#include "tester/commands/command_table.h"

/// What the rows of the command table do, one function a command. The count of arguments has been
/// checked; what they mean has not.
namespace tester {

// help_commands.cpp
CommandEnd listCommands(Debugger& debugger, const Words& arguments);
CommandEnd helpOnCommand(Debugger& debugger, const Words& arguments);

// list_commands.cpp
CommandEnd listProcesses(Debugger& debugger, const Words& arguments);
CommandEnd listQueues(Debugger& debugger, const Words& arguments);
CommandEnd listTimers(Debugger& debugger, const Words& arguments);
CommandEnd listSignals(Debugger& debugger, const Words& arguments);
CommandEnd listHistory(Debugger& debugger, const Words& arguments);
CommandEnd listReady(Debugger& debugger, const Words& arguments);
CommandEnd listDefinitions(Debugger& debugger, const Words& arguments);
CommandEnd showInstance(Debugger& debugger, const Words& arguments);
CommandEnd selectEvent(Debugger& debugger, const Words& arguments);

// control_commands.cpp
CommandEnd listBreakpoints(Debugger& debugger, const Words& arguments);
CommandEnd setBreakpoint(Debugger& debugger, const Words& arguments);
CommandEnd removeBreakpoint(Debugger& debugger, const Words& arguments);
CommandEnd listTrace(Debugger& debugger, const Words& arguments);
CommandEnd setTrace(Debugger& debugger, const Words& arguments);
CommandEnd maskTrace(Debugger& debugger, const Words& arguments);
CommandEnd setPageLength(Debugger& debugger, const Words& arguments);
CommandEnd nextTransition(Debugger& debugger, const Words& arguments);
CommandEnd go(Debugger& debugger, const Words& arguments);
CommandEnd proceedUntil(Debugger& debugger, const Words& arguments);
CommandEnd stopRun(Debugger& debugger, const Words& arguments);
CommandEnd restartSystem(Debugger& debugger, const Words& arguments);
CommandEnd resetSystem(Debugger& debugger, const Words& arguments);
CommandEnd showNow(Debugger& debugger, const Words& arguments);
CommandEnd exitTester(Debugger& debugger, const Words& arguments);

// session_commands.cpp
CommandEnd addMark(Debugger& debugger, const Words& arguments);
CommandEnd listMarks(Debugger& debugger, const Words& arguments);
CommandEnd openLog(Debugger& debugger, const Words& arguments);
CommandEnd closeLog(Debugger& debugger, const Words& arguments);
CommandEnd openSystem(Debugger& debugger, const Words& arguments);
CommandEnd changeDirectory(Debugger& debugger, const Words& arguments);

// change_commands.cpp
CommandEnd sendSignal(Debugger& debugger, const Words& arguments);
CommandEnd setTimer(Debugger& debugger, const Words& arguments);
CommandEnd resetTimer(Debugger& debugger, const Words& arguments);
CommandEnd assignVariable(Debugger& debugger, const Words& arguments);

}  // namespace tester
