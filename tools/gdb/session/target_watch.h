#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "gdb/mi/record.h"
#include "gdb/session/control.h"

namespace gdb {

/// Keeps what is known of the debugged program by the records that GDB sends unasked, and by the
/// answers to two queries that tell what it does not send.
class TargetWatch {
 public:
  const Target& target() const { return present; }
  Target& target() { return present; }

  /// Takes an asynchronous record.
  void take(const mi::Record& record);
  /// Takes the answer to "-list-thread-groups". GDB tells of a program's file by nothing else.
  void takeGroups(const mi::Record& record);
  /// Takes the answer to "info connections".
  void takeConnections(const mi::Record& record);
  /// Takes the answer to "-stack-info-frame".
  void takeFrame(const mi::Record& record);
  /// GDB has ended, and the target with it.
  void forgetProcess();

  /// What the user is to be told when the present command ends, a line each.
  std::vector<std::string> takeNotes() { return std::exchange(notes, {}); }
  /// Whether breakpoints came, changed or went since the last call.
  bool takeBreakpointChange() { return std::exchange(haveBreakpointsChanged, false); }

  /// The numbers of the debugged processes.
  std::vector<std::string> processes() const;

  /// "prog: stopped in main at main.c:12"
  std::string title() const;

 private:
  void takeStop(const mi::Value& results);
  void takeExit(const mi::Value& results);

  Target present;
  std::map<std::string, std::string> groups;  ///< that have a process, and its number
  std::vector<std::string> notes;
  bool haveBreakpointsChanged = false;
};

}  // namespace gdb
