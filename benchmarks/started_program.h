#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// A program started in a process group of its own, which ends with this object.
class StartedProgram {
 public:
  /// `display` is the X display that it gets. What it prints goes nowhere, save its errors.
  StartedProgram(const std::vector<std::string>& command, const std::string& display);
  StartedProgram(const StartedProgram&) = delete;
  StartedProgram& operator=(const StartedProgram&) = delete;
  ~StartedProgram();

  pid_t id() const { return processId; }
  bool isRunning() const;

 private:
  pid_t processId;
};

/// The process of that name among `first` and all that descend from it; 0 when there is none.
pid_t findProcess(pid_t first, const std::string& name);

/// Kilobytes of memory that are the process's own or shared with others.
long residentKilobytes(pid_t process);

/// What a process has used so far.
struct ProcessUse {
  double processorSeconds = 0;  ///< in the program and in the kernel
  long wakeUps = 0;             ///< how often its first thread waited and went on
};

ProcessUse useOf(pid_t process);
