#pragma once

#include <chrono>
#include <initializer_list>
#include <string>
#include <vector>

/// The words of a probe's command line, the measure first.
using Words = std::vector<std::string>;

/// One thing that a probe can measure.
struct Measure {
  const char* name;
  void (*take)(const Words& words);
};

/// Takes the measure that the command line names. Returns the process's status; what goes wrong is
/// said on standard error.
int runProbe(std::initializer_list<Measure> measures, int argc, char** argv);

/// The display of this process.
std::string ownDisplay();

/// What a program may still do once it is drawn takes no longer.
inline constexpr std::chrono::milliseconds kStartTail{1000};
