#pragma once

#include <string>
#include <vector>

#include "tests/support/child_process.h"

/// The number in the port file; 0 when there is none.
int publishedPort();

bool exists(const std::string& path);

/// The program nelmpm as a child of the test. Ends, orderly, with the object.
class NelmpmProcess {
 public:
  explicit NelmpmProcess(std::vector<std::string> arguments = {});
  ~NelmpmProcess();
  NelmpmProcess(const NelmpmProcess&) = delete;
  NelmpmProcess& operator=(const NelmpmProcess&) = delete;

  /// Whether it published its port and listens.
  bool isUp();

  pid_t pid() const { return process.id(); }
  /// Where it listens, once it is up.
  const std::string& socketPath() const { return socketName; }

  std::string errors();
  std::string output();
  /// Waits until standard error has `text`.
  bool complains(const std::string& text);
  /// Lines on standard error so far.
  int complaintCount();

  void signal(int number) const { process.signal(number); }
  /// Waits for its end: the exit status, or 128 + n after signal n.
  int exitStatus() { return process.exitStatus(); }

 private:
  ChildProcess process;
  std::string socketName;
};
