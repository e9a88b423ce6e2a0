#pragma once

#include <poll.h>
#include <sys/types.h>

#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/basics.h"

/// Reports `text` as a failure of the running test at `where` and ends the test by an exception
/// that GoogleTest knows as reported. For helpers whose caller cannot go on.
[[noreturn]] void failScript(const std::string& text, SourceLine where);

/// Waits until the condition holds; false when it does not within `limit`.
bool waitUntil(const std::function<bool()>& condition, Milliseconds limit = kAnswerTime);

/// What to start and how.
struct Launch {
  std::filesystem::path program;
  std::vector<std::string> arguments{};    ///< behind the program's name, which is its file name
  std::vector<std::string> environment{};  ///< "NAME=value" sets, "NAME" alone removes a variable
  std::filesystem::path workingFolder{};   ///< empty: the test's own
};

/// A program that runs as a child of the test. It is killed with its object, and with the test.
class ChildProcess {
 public:
  explicit ChildProcess(const Launch& launch);
  /// Runs `body` in a copy of this process; its result is the exit status.
  explicit ChildProcess(const std::function<int()>& body);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess() { kill(); }

  pid_t id() const { return processId; }
  bool isRunning();
  void signal(int number) const;
  /// Ends the program by SIGKILL, if it still runs, and waits for its end.
  void kill();

  /// What the program wrote so far to standard output and to standard error.
  std::string output() const { return written(0); }
  std::string errors() const { return written(1); }

  /// Waits for the program's end and returns its exit status, 128 + n when signal n ended it.
  /// Fails the test when it goes on running.
  int exitStatus(SourceLine where = SourceLine::current());

  /// Waits until standard output or standard error holds `text`; fails the test when they do not.
  void expectText(const std::string& text, SourceLine where = SourceLine::current());

  /// Sleeps until one of `others` is ready, at most a short while, since nothing wakes it when the
  /// program writes or ends.
  static void waitABit(std::vector<pollfd> others = {});

  /// Everything the program wrote, for the text of a failure.
  std::string report();

 private:
  std::string written(std::size_t stream) const;

  pid_t processId = -1;
  std::array<UniqueDescriptor, 2>
      streams;  ///< files without a name, which never make a writer wait
  std::optional<int> status;
};
