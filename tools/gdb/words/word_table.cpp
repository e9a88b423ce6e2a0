#include "gdb/words/word_table.h"

#include <array>

namespace gdb {

namespace {

using Kind = QuestionRow::Kind;

// The order is that of the list that the user sees.
constexpr std::array kPlainWords = {
    WordRow{{"?\?", "", "Lists these words"}, listWords},
    WordRow{{"stop", "", "Stops the program, or what GDB is doing"}, stopTarget},
    WordRow{{"restart", "", "Runs the program anew, without asking"},
            restartTarget,
            WordRow::kInterrupts},
    WordRow{{"input", "[<text>]", "Writes a line to the program's input"}, inputText},
    WordRow{{"end-input", "", "Ends the program's input"}, endInput},
    WordRow{{"mark-output", "<on or off>", "Marks lines that the program wrote"}, markOutput},
    WordRow{{"set-page-length", "<lines>", "Lines after which to ask; 0 never"}, setPageLength},
    WordRow{{"restart-gdb", "", "Starts GDB anew, with its breakpoints"}, restartDebugger},
    WordRow{{"exit", "", "Ends all, after asking to save"}, leaveAfterSaving},
    WordRow{{"quit", "", "Ends all at once"}, leaveAtOnce},
};

constexpr std::array kQuestionWords = {
    QuestionRow{.help = {"open-program", "[<file>]", "Debugs the program in that file"},
                .kind = Kind::kFile,
                .asked = "Open Program",
                .none = "No program was named",
                .command = "file %f"},
    QuestionRow{.help = {"system", "[<file>]", "The same, from the window's menu"},
                .kind = Kind::kFile,
                .asked = "Open Program",
                .none = "No program was named",
                .command = "file %f"},
    QuestionRow{.help = {"open-core", "[<file>]", "Examines what a dead program left"},
                .kind = Kind::kFile,
                .asked = "Open Core File",
                .none = "No core file was named",
                .command = "core-file %1"},
    QuestionRow{.help = {"symbol-file-of", "[<file>]", "Takes the symbols from that file"},
                .kind = Kind::kFile,
                .asked = "Open Symbol File",
                .none = "No symbol file was named",
                .command = "symbol-file %f"},
    QuestionRow{.help = {"source-directory", "[<directory>]", "Looks for sources there too"},
                .kind = Kind::kDirectory,
                .asked = "Select Source Directory",
                .none = "No directory was named",
                .command = "directory %f"},
    QuestionRow{.help = {"change-directory", "[<directory>]", "Changes GDB's working directory"},
                .kind = Kind::kDirectory,
                .asked = "Select Directory",
                .none = "No directory was named",
                .command = "cd %1"},
    QuestionRow{.help = {"attach-to", "[<process>]", "Debugs a process that runs already"},
                .kind = Kind::kChoice,
                .asked = "Process to attach to:",
                .none = "There is no process of yours to attach to",
                .choices = processChoices,
                .command = "attach %1"},
    QuestionRow{.help = {"connect", "[<address>]", "Debugs by gdbserver, OpenOCD or QEMU"},
                .kind = Kind::kText,
                .asked = "Address, as localhost:3333 for OpenOCD,\n"
                         "localhost:1234 for QEMU, a device, a socket:",
                .none = "No address was given",
                .kept = &WordMemory::address,
                .command = "target remote %1"},
    QuestionRow{.help = {"break-at", "[<beginning>]", "Sets a breakpoint at such a function"},
                .kind = Kind::kText,
                .asked = "Beginning of the function's name, or FILE:LINE:",
                .none = "There are too many functions to list them all; a beginning is needed",
                .next = breakAtPlace},
    QuestionRow{.help = {"choose-breakpoints", "", "Asks which breakpoints are to be on"},
                .kind = Kind::kBits,
                .asked = "Breakpoints that are to be on; the others go off:",
                .none = "No breakpoint is set",
                .source = "-break-list",
                .choices = breakpointChoices,
                .command = "enable %1",
                .otherCommand = "disable %1"},
    QuestionRow{.help = {"set-signals", "", "Asks which signals are to stop the program"},
                .kind = Kind::kBits,
                .asked = "Signals that are to stop the program;\nthe others pass:",
                .none = "GDB names no signals",
                .source = "-interpreter-exec console \"info signals\"",
                .choices = signalChoices,
                .command = "handle %1 stop print pass",
                .otherCommand = "handle %1 nostop print pass"},
    QuestionRow{.help = {"choose-thread", "[<number>]", "Chooses the thread that is looked at"},
                .kind = Kind::kChoice,
                .asked = "Thread:",
                .none = "There is no thread",
                .source = "-interpreter-exec console \"info threads\"",
                .choices = threadChoices,
                .command = "thread %1"},
    QuestionRow{.help = {"choose-frame", "[<number>]", "Chooses the frame that is looked at"},
                .kind = Kind::kNumber,
                .asked = "Number of the frame",
                .none = "There is no frame",
                .source = "-stack-info-depth 10000",
                .choices = frameChoices,
                .shown = "-stack-list-frames 0 9",
                .command = "frame %1"},
    QuestionRow{.help = {"set-variable", "[<name> [<value>]]", "Changes a variable of the frame"},
                .kind = Kind::kChoice,
                .asked = "Variable:",
                .none = "There is no variable here",
                .source = "-stack-list-variables --all-values",
                .choices = variableChoices,
                .next = setVariable},
    QuestionRow{.help = {"show-register", "[<name>]", "Shows a register of the frame"},
                .kind = Kind::kChoice,
                .asked = "Register:",
                .none = "There is no register",
                .source = "-data-list-register-names",
                .choices = registerChoices,
                .command = "info registers %1"},
};

}  // namespace

std::span<const WordRow> plainWords() {
  return kPlainWords;
}

std::span<const QuestionRow> questionWords() {
  return kQuestionWords;
}

}  // namespace gdb
