#include <array>

#include "tester/commands/command_functions.h"

namespace tester {

namespace {

/// A command that only looks, or speaks to the system as its environment does.
constexpr CommandRow besideARun(CommandRow row) {
  row.keepsRun = true;
  return row;
}

// The order is that of the list that the user sees.
constexpr std::array kRows = {
    besideARun({"?\?", "", "", "Lists all commands", "", listCommands}),
    besideARun({"help", "", "[<command>]", "Explains a command", "", helpOnCommand}),
    besideARun({"list-process", "", "[<process>]", "Lists the living process instances",
                "Each with its state and the length of its input queue.", listProcesses}),
    besideARun({"list-queue", "", "[<instance>]", "Lists the signals in the input queues",
                "Of an instance, of all those of a process, or of all. Oldest first.\n"
                "The state of the instance keeps \"saved\" ones for another state.",
                listQueues}),
    besideARun({"list-timer", "", "", "Lists the active timers",
                "In the order in which they will expire.", listTimers}),
    besideARun({"list-signal", "", "[<signal>]", "Lists the signals with their parameters", "",
                listSignals}),
    besideARun({"list-ready", "", "", "Lists the transitions that are ready now",
                "In the order in which they will be fired.", listReady}),
    besideARun(
        {"list-history", "", "[<count>]", "Lists the transitions fired last",
         "Oldest first, up to 2,000 of them, whatever was traced: the time, the instance, its\n"
         "state, the signal or timer and what became of it.",
         listHistory}),
    besideARun({"list-definition", "", "[<process>]", "Lists the process types",
                "Each with the numbers of its instances: living, initial and at most. Of one\n"
                "process: its states, its timers and the inputs it knows.",
                listDefinitions}),
    CommandRow{"select-event", "", "", "Asks for a transition and shows its instance's",
               "Of the last 2,000 transitions. Shows those of the same instance.", selectEvent},
    besideARun({"list-breakpoint", "", "", "Lists the breakpoints", "", listBreakpoints}),
    besideARun({"list-trace", "", "", "Lists the trace levels", "", listTrace}),
    besideARun({"show-instance", "print", "[<instance> [<variable>]]", "Shows an instance",
                "Its state, its relations, timers and variables, or one variable alone. Asks\n"
                "which instance, and of a process which number, or all.",
                showInstance}),
    CommandRow{"assign-variable", "", "[<instance> [<variable> [<value>]]]", "Changes a variable",
               "Asks for what is left out.", assignVariable},
    CommandRow{"next-transition", "", "[<count>]", "Fires the next transition, or so many",
               "Breakpoints stop it before any transition but the first.", nextTransition},
    CommandRow{
        "go", "", "", "Runs until a breakpoint",
        "Or until nothing is left to do or a dynamic error occurs. The next command ends the run,\n"
        "unless it only lists, shows or sends.",
        go},
    CommandRow{"proceed-until", "", "<time>", "Runs until the time or a breakpoint",
               "The time is in seconds since the start of the system. Transitions of that very\n"
               "time are still fired.",
               proceedUntil},
    CommandRow{"stop", "", "", "Ends a run", "", stopRun},
    CommandRow{
        "restart", "", "", "Begins anew",
        "All instances stand at their start again, the history is empty. Breakpoints and trace\n"
        "levels stay.",
        restartSystem},
    CommandRow{"reset-system", "", "", "Begins anew without breakpoints",
               "As restart, and also drops the breakpoints and sets trace levels and page length\n"
               "back. Warns when breakpoints or signals in queues are lost.",
               resetSystem},
    besideARun({"now", "", "", "Shows the virtual time", "In seconds since the start.", showNow}),
    besideARun({"send", "output", "[<signal> [<instance> [<parameter>...]]]", "Sends a signal",
                "From the environment into the queue of an instance. Texts with blanks stand in\n"
                "quotes. Asks for what is left out.",
                sendSignal}),
    CommandRow{"set-timer", "", "<instance> <timer> <seconds>", "Sets a timer",
               "It expires so many seconds from now.", setTimer},
    CommandRow{"reset-timer", "", "[<instance> [<timer>]]", "Stops a timer",
               "When it has expired, its signal is taken out of the queue. Asks for one of the\n"
               "active timers.",
               resetTimer},
    CommandRow{"set-breakpoint", "breakpoint", "<process> [<state> [<signal>]]",
               "Makes runs stop before a transition",
               "Of the process, or of an instance such as Button:2, in the state, at the signal\n"
               "or timer. \"*\" stands for any; start transitions have the state \"start\".",
               setBreakpoint},
    CommandRow{"remove-breakpoint", "", "[<number>]", "Removes a breakpoint",
               "\"*\" removes all of them. Asks for the number.", removeBreakpoint},
    CommandRow{"set-trace", "trace", "<level> [<process>]", "Sets how much runs tell",
               "0 nothing, 1 transitions, 2 also signals and creations, 3 also timers and tasks;\n"
               "for the whole system or for one process.",
               setTrace},
    CommandRow{"mask-trace", "", "[<process>...]", "Sets of which processes runs tell",
               "Whatever the trace levels; \"*\" stands for all. Asks for the processes.",
               maskTrace},
    CommandRow{"add-mark", "", "[<name>]", "Gives the present time a name", "Asks for the name.",
               addMark, true},
    besideARun({"list-mark", "", "", "Lists the marks", "A restart drops them.", listMarks}),
    CommandRow{"open-log", "", "[<file>]", "Copies all output to a file",
               "At its end, when it exists. A relative name begins in the source directory. Asks\n"
               "for the file.",
               openLog, true},
    CommandRow{"close-log", "", "", "Ends the copy of the output", "", closeLog},
    CommandRow{"change-directory", "", "[<directory>]", "Changes the source directory",
               "In which relative names of files begin. Asks for the directory.", changeDirectory,
               true},
    CommandRow{"system", "", "[<file>]", "Opens a system by its symbol file",
               "The system begins anew; the directory of the file becomes the source directory.\n"
               "The file has the line \"system Pedestrian Crossing\". Asks for the file.",
               openSystem, true},
    CommandRow{"set-page-length", "", "<lines>", "Sets after how many lines a list asks to go on",
               "0: lists are shown at once, however long. At the start it is 200.", setPageLength},
    CommandRow{"exit", "", "", "Ends the tester and its user interface",
               "The user interface may ask first whether to save.", exitTester},
};

}  // namespace

const CommandTable& testerCommands() {
  static const CommandTable table{kRows};
  return table;
}

}  // namespace tester
