#pragma once

#include <optional>
#include <string>
#include <vector>

#include "gdb/process/channel.h"
#include "gdb/process/child.h"
#include "gdb/process/pty.h"

namespace gdb {

/// GDB as a process, with three terminals: its console, its machine interface, and one for the
/// program that it debugs. The end of the object is GDB's end: it is told by the loss of its
/// terminal, on which it ends a program that it started and lets an attached one go, then asked to
/// end, and killed when that takes too long.
class DebuggerProcess {
 public:
  /// `program` is GDB's path. Throws std::system_error.
  DebuggerProcess(const std::string& program, bool readsInitFiles);
  ~DebuggerProcess();
  DebuggerProcess(const DebuggerProcess&) = delete;
  DebuggerProcess& operator=(const DebuggerProcess&) = delete;

  Channel& console() { return *consoleEnd; }
  Channel& machine() { return *machineEnd; }
  Channel& program() { return *programEnd; }
  /// The terminal for the debugged program.
  const std::string& programTerminal() const { return programPty.name; }
  Child& child() { return *process; }

  /// GDB has opened its machine interface. Until then it is kept open here: the channel would end
  /// before it began. From then on it is not: its end is GDB's.
  void machineIsOpen() { machinePty.slave.close(); }

 private:
  Pty consolePty;
  Pty machinePty;
  Pty programPty;
  std::optional<Channel> consoleEnd;
  std::optional<Channel> machineEnd;
  std::optional<Channel> programEnd;
  std::optional<Child> process;
};

/// The environment that GDB gets: this process's, with a plain terminal and English texts.
std::vector<std::string> debuggerEnvironment();

}  // namespace gdb
