#pragma once

#include <sys/types.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/deadline.h"
#include "tests/support/source_line.h"
#include "tests/support/unique_descriptor.h"

struct pollfd;

/// What to start and how.
struct Launch {
  std::filesystem::path program;
  std::vector<std::string> arguments{};    ///< behind the program's name, which is its file name
  std::vector<std::string> environment{};  ///< "NAME=value" sets, "NAME" alone removes a variable
  std::filesystem::path workingFolder{};   ///< empty: the test's own
};

/// A program that runs as a child of the test, its output read through pipes. It is killed with its
/// object, and with the test.
class ChildProcess {
 public:
  explicit ChildProcess(const Launch& launch);
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  pid_t id() const { return processId; }
  bool isRunning();
  void signal(int number) const;
  /// Ends the program by SIGKILL, if it still runs, and waits for its end.
  void kill();

  /// Takes what the program wrote so far out of the pipes, without waiting.
  void drain();
  /// What the program wrote to standard output and to standard error, as far as drained.
  const std::string& output() const { return streams[0].text; }
  const std::string& errors() const { return streams[1].text; }

  /// Waits for the program's end and returns its exit status, 128 + n when signal n ended it.
  /// Fails the test when it still runs after `limit`.
  int exitStatus(Milliseconds limit = kAnswerTime, SourceLine where = SourceLine::current());

  /// Waits until standard output or standard error holds `text`; fails the test after `limit`.
  void expectText(const std::string& text, Milliseconds limit = kAnswerTime,
                  SourceLine where = SourceLine::current());

  /// Sleeps until the program writes, ends or `limit` passes, at most a short while, then drains.
  void waitABit(Milliseconds limit);

  /// Entries for a poll that wakes when the program writes.
  std::array<pollfd, 2> pollEntries() const;

  /// Everything the program wrote, for the text of a failure.
  std::string report();

 private:
  struct Stream {
    UniqueDescriptor pipe;
    std::string text;
  };

  static void drain(Stream& stream);

  pid_t processId = -1;
  std::array<Stream, 2> streams;
  std::optional<int> status;
};

/// How often a poll looks whether a child has ended, since nothing wakes it then.
inline constexpr Milliseconds kChildPollTime{10};
