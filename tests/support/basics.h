#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "support/descriptor.h"

/// What all tests share. Needs no test library: the benchmarks use it too.

using Milliseconds = std::chrono::milliseconds;

/// How long a test waits for something that should happen at once. Generous, since a loaded machine
/// or a sanitizer slows programs down; only a failing test waits it out.
inline constexpr Milliseconds kAnswerTime{10000};

/// A moment to wait for at most.
class Deadline {
 public:
  explicit Deadline(Milliseconds fromNow) : end(Clock::now() + fromNow) {}

  bool hasPassed() const { return Clock::now() >= end; }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point end;
};

/// A line of a test. What std::source_location is, which clang 14 does not have.
struct SourceLine {
  /// As a default argument, the line of the caller.
  static constexpr SourceLine current(const char* file = __builtin_FILE(),
                                      int line = __builtin_LINE()) {
    return {file, line};
  }

  const char* file;
  int line;
};

/// An empty folder for one test, removed with all its contents. Its path holds no "-", since some
/// programs look for options anywhere in their command line.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();

  const std::filesystem::path& path() const { return folder; }
  std::filesystem::path operator/(std::string_view name) const { return folder / name; }
  /// Writes a file into the folder and returns its path.
  std::filesystem::path write(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path folder;
};

/// All bytes of a file; empty when it cannot be read.
std::string readFile(const std::filesystem::path& path);

/// The program `name` of this build: it stands in the folder of the running test program.
std::filesystem::path builtProgram(std::string_view name);
