#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

#include "gdb/mi/record.h"
#include "tester_link/user_link.h"

/// What GDB's results have to choose from. Pure but for the processes.
namespace gdb {

struct Choice {
  std::string item;   ///< what the user sees
  std::string value;  ///< what it is in a command
  bool isOn = false;  ///< of something that can be on or off
};
using Choices = std::vector<Choice>;

/// What the user sees of them, each of which is another text than those before it.
tester_link::Items itemsOf(const Choices& choices);

/// Aligns items that begin with their value, a number, to the right: the user interface sorts the
/// items of a list as texts.
void alignNumbers(Choices& choices);

/// Of the text of "info threads", whose numbers are those of the commands also when there are
/// several processes.
Choices threadChoices(const mi::Record& result);
/// Of -stack-list-frames.
Choices frameChoices(const mi::Record& result);
/// Of -break-list; on are those that are enabled.
Choices breakpointChoices(const mi::Record& result);
/// Of the text of "info signals": those that a program may be debugged by, on are those that stop.
Choices signalChoices(const mi::Record& result);
/// Of -stack-list-variables: of several with one name the innermost, which is what the name means.
Choices variableChoices(const mi::Record& result);
/// Of -data-list-register-names.
Choices registerChoices(const mi::Record& result);
/// Of -complete "break ...".
Choices placeChoices(const mi::Record& result);
/// The processes of the user but for those that debugger and window consist
/// of: the Postmaster, its tools, and GDB.
Choices processChoices(const mi::Record& unused);

/// Those in a folder like /proc as `self` sees them, a child of `parent`.
Choices processesIn(const std::filesystem::path& folder, pid_t self, pid_t parent);

/// Whether that is the number of one of those of which debugger and window consist.
bool isOfSession(const std::string& process);

/// "main at prog.c:12", or what there is of that.
std::string placeText(const mi::Value& frame);

/// The signals by which a program may be debugged.
const std::vector<std::string>& offeredSignals();

}  // namespace gdb
