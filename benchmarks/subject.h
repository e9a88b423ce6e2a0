#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "benchmarks/bench_postmaster.h"
#include "benchmarks/started_program.h"
#include "benchmarks/watcher.h"

/// A program under measure: what to start and how to know it.
struct SubjectDescription {
  std::string title;    ///< how the title of its window begins
  std::string process;  ///< the process to look at: the command itself or one that it starts
  std::vector<std::string> command;
};

/// A program started on a display, its window drawn. The window of this project gets a Postmaster.
class Subject {
 public:
  using Clock = std::chrono::steady_clock;

  /// Returns when the window is drawn. Throws std::runtime_error when it does not come.
  Subject(const Watcher& watcher, const SubjectDescription& description,
          const std::string& display);

  Window window() const { return mainWindow; }
  pid_t process() const { return measured; }
  /// From the exec until the window showed what it went on showing.
  std::chrono::duration<double, std::milli> drawnAfter() const { return drawn - started; }

  /// Lets time pass for it.
  void pause(std::chrono::milliseconds time);
  Watcher::Pause pauser() {
    return [this](std::chrono::milliseconds time) { pause(time); };
  }
  /// Returns when its window shows what it goes on showing.
  void settle();

  /// Only for the window of this project.
  BenchPostmaster& postmaster() { return *owned; }

 private:
  const Watcher& eyes;
  std::unique_ptr<BenchPostmaster> owned;
  Clock::time_point started;
  StartedProgram program;
  Window mainWindow = 0;
  Clock::time_point drawn;
  pid_t measured = 0;
};

inline constexpr const char* kWindowProcess = "nelkvui";
inline constexpr const char* kWindowTitle = "Korvane UI";
