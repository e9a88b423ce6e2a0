// How a program begins anew depends on who runs it.

#include "gdb/words/word_table.h"

namespace gdb {

namespace {

using tester_link::Answer;
using tester_link::AnswerKind;

constexpr char kRestartCaption[] = "Korvane - Restart";

/// With this prefix GDB asks nothing: the word says it all.
void run(Control& control) {
  control.command("server run");
}

/// A process that was there before the debugger is not killed unasked. Without Python GDB does not
/// tell whose it is.
void restartLocal(Control& control) {
  constexpr char kWasAttached[] =
      "-interpreter-exec console \"python print(gdb.selected_inferior().was_attached)\"";
  control.query(kWasAttached, [&control](const mi::Record& result) {
    if (!result.text.starts_with("True")) {
      run(control);
      return;
    }
    control.user().askYesNo(
        kRestartCaption,
        "The debugger was attached to this process.\nKill it, and run its program anew?",
        control.then([&control](const Answer& answer) {
          if (answer.kind == AnswerKind::kYes) {
            run(control);
          } else {
            control.refuse("It was left as it is.");
          }
        }));
  });
}

/// Of a remote target that is not QEMU.
void restartServed(Control& control) {
  control.query("-interpreter-exec console \"info connections\"",
                [&control](const mi::Record& result) {
                  if (result.text.find("extended-remote") != std::string::npos) {
                    run(control);
                    return;
                  }
                  control.refuse(
                      "The other end restarts its program: for OpenOCD \"monitor reset halt\" and "
                      "then \"maintenance flush register-cache\"; gdbserver is started anew, then "
                      "\"connect\".");
                });
}

void restartRemote(Control& control) {
  // QEMU alone knows this packet; its own restart is a command of its monitor, and "run" ends it.
  control.query("-interpreter-exec console \"maintenance packet qqemu.sstepbits\"",
                [&control](const mi::Record& result) {
                  if (result.text.find("ENABLE=") == std::string::npos) {
                    restartServed(control);
                    return;
                  }
                  control.command("monitor system_reset", [&control] {
                    // GDB would go on to show the registers from before.
                    control.command("maintenance flush register-cache",
                                    [&control] { control.command("frame 0"); });
                  });
                });
}

}  // namespace

void restartTarget(Control& control, const std::string& /*argument*/) {
  (control.target().remote.empty() ? restartLocal : restartRemote)(control);
}

}  // namespace gdb
