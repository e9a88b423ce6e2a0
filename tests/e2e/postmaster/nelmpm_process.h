#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

inline constexpr const char* kPortFile = "/tmp/.nel.tessil.PORTNUMBER";

/// The number in the port file; 0 when there is none.
int publishedPort();

bool exists(const std::string& path);
std::string contentsOf(const std::string& path);

/// The program nelmpm as a child of the test, with its two outputs in files. Ends, orderly, with
/// the object.
class NelmpmProcess {
 public:
  explicit NelmpmProcess(std::vector<std::string> arguments = {});
  ~NelmpmProcess();
  NelmpmProcess(const NelmpmProcess&) = delete;
  NelmpmProcess& operator=(const NelmpmProcess&) = delete;

  /// Whether it published its port and listens.
  bool isUp();

  pid_t pid() const { return child; }
  /// Where it listens, once it is up.
  std::string socketPath() const;

  std::string errors() const { return contentsOf(errorFile); }
  std::string output() const { return contentsOf(outputFile); }
  /// Waits until standard error has `text`.
  bool complains(const std::string& text) const;
  /// Lines on standard error so far.
  int complaintCount() const;

  void signal(int number) const;
  /// Waits for its end; the exit status, or -1 when it does not end or was killed.
  int exitStatus();

 private:
  pid_t child = 0;
  std::string folder;
  std::string outputFile;
  std::string errorFile;
  std::string socketName;
};
