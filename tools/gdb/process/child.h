#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "support/descriptor.h"

namespace gdb {

/// A program to be started on a terminal.
struct Launch {
  std::string program;                        ///< path
  std::vector<std::string> arguments = {};    ///< behind the program's name
  std::vector<std::string> environment = {};  ///< "NAME=value", all of it
  std::string terminal = {};                  ///< becomes its standard streams and controls it
};

/// A child in a session of its own, with no other descriptors than its terminal and with all
/// signals as a program expects them. It is killed with its object if it has not ended, and told to
/// end (SIGTERM) when this process does in whatever way.
class Child {
 public:
  /// Throws std::system_error when it cannot be started.
  explicit Child(const Launch& launch);
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;
  ~Child();

  pid_t pid() const { return processId; }
  void signal(int number) const;
  /// The status of its end as of waitpid, or nothing as long as it lives.
  std::optional<int> ended();
  /// Waits for its end, at most that long.
  std::optional<int> waitForEnd(std::chrono::milliseconds longest);

 private:
  pid_t processId = -1;
  std::optional<int> status;
};

/// Whether the process of that number is debugged by `tracer`.
bool isTracedBy(const std::string& process, pid_t tracer);

/// Tells of children that end. From its making on the process takes SIGCHLD by this descriptor
/// alone, so that nothing else, the link in particular, reaps a child or takes its end for its own;
/// and a broken pipe is an error of the write instead of a signal. The signal stays blocked when
/// the object has gone.
class ChildSignals {
 public:
  /// Throws std::system_error.
  ChildSignals();

  /// Readable after a child has ended.
  int descriptor() const { return source.get(); }
  /// Takes the signals that came.
  void take() const;

 private:
  UniqueDescriptor source;
};

}  // namespace gdb
