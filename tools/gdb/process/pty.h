#pragma once

#include <string>

#include "support/descriptor.h"

namespace gdb {

/// What a pseudo-terminal is for.
enum class PtyUse {
  kConsole,  ///< GDB's console: lines of any length, and byte 0x03 interrupts
  kMachine,  ///< GDB's machine interface: bytes as they are
  kProgram,  ///< the debugged program's terminal: lines, and 0x04 is the end of its input
};

/// A pair of a master, which does not block, and a slave. None of them echoes or changes what is
/// written on the slave. Both are closed with the object, and in every program that is started.
struct Pty {
  UniqueDescriptor master;
  UniqueDescriptor slave;
  std::string name;  ///< path of the slave
};

/// Throws std::system_error.
Pty openPty(PtyUse use);

/// Whether that process has that terminal open; also where that cannot be seen.
bool isOpenIn(const std::string& process, const std::string& terminal);

}  // namespace gdb
