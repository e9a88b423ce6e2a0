// Measures what any X program can be measured by. Prints lines of a name and a number.
//
//   program_probe start TITLE PROCESS COMMAND...           drawn_ms, resident_kb
//   program_probe idle SECONDS TITLE PROCESS COMMAND...    idle_cpu (percent), idle_wakeups (a
//   second) program_probe replies TITLE PROCESS COMMAND...         replies_start, replies_resize (a
//   step) program_probe flood LINES TITLE PROCESS COMMAND...     flood_ms
//
// The window is the first viewable one whose title begins with TITLE; PROCESS is the name of the
// process to look at, the command itself or one that it starts. For a flood the command reads lines
// from the pipe that NEL_FLOOD_IN names to its end, shows them and writes a line to the pipe
// NEL_FLOOD_OUT when it has taken them all.

#include <sys/stat.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "benchmarks/flood.h"
#include "benchmarks/probe_main.h"
#include "benchmarks/subject.h"
#include "benchmarks/x_proxy.h"
#include "tests/support/basics.h"

#include <X11/Xlib.h>

namespace {

using std::chrono::milliseconds;

/// The description from `words`, which it takes up from number `first` on.
SubjectDescription describe(const Words& words, std::size_t first) {
  constexpr std::size_t kNames = 2;
  if (words.size() <= first + kNames) {
    throw std::runtime_error("too few words; see the head of program_probe.cpp");
  }
  return {words[first], words[first + 1], Words(words.begin() + first + kNames, words.end())};
}

void measureStart(const Words& words) {
  const Watcher watcher;
  const Subject subject(watcher, describe(words, 1), ownDisplay());
  std::printf("drawn_ms %.1f\n", subject.drawnAfter().count());
  std::printf("resident_kb %ld\n", residentKilobytes(subject.process()));
}

void measureIdle(const Words& words) {
  const std::chrono::seconds wanted(std::stoi(words.at(1)));
  const Watcher watcher;
  Subject subject(watcher, describe(words, 2), ownDisplay());
  subject.pause(kStartTail);
  const ProcessUse before = useOf(subject.process());
  const auto start = Subject::Clock::now();
  subject.pause(wanted);
  const std::chrono::duration<double> passed = Subject::Clock::now() - start;
  const ProcessUse after = useOf(subject.process());
  constexpr double kPercent = 100;
  std::printf("idle_cpu %.2f\n",
              kPercent * (after.processorSeconds - before.processorSeconds) / passed.count());
  std::printf("idle_wakeups %.1f\n",
              static_cast<double>(after.wakeUps - before.wakeUps) / passed.count());
}

/// Resizes the window as its frame would, and lets it come to rest.
void resize(const Watcher& watcher, Subject& subject, int wider) {
  const screen::ScreenArea area = watcher.areaOf(subject.window());
  XResizeWindow(watcher.display(), subject.window(), static_cast<unsigned>(area.width + wider),
                static_cast<unsigned>(area.height + wider));
  XSync(watcher.display(), False);
  subject.settle();
}

void measureReplies(const Words& words) {
  constexpr int kSteps = 5;
  constexpr int kStepPixels = -20;
  const Watcher watcher;
  const XProxy proxy(ownDisplay());
  Subject subject(watcher, describe(words, 1), proxy.display());
  subject.pause(kStartTail);
  std::printf("replies_start %llu\n", static_cast<unsigned long long>(proxy.replies()));
  std::vector<std::uint64_t> steps;
  for (int step = 0; step < kSteps; ++step) {
    const std::uint64_t before = proxy.replies();
    resize(watcher, subject, kStepPixels);
    steps.push_back(proxy.replies() - before);
  }
  std::sort(steps.begin(), steps.end());
  std::printf("replies_resize %llu\n", static_cast<unsigned long long>(steps[kSteps / 2]));
}

void measureFlood(const Words& words) {
  const int lines = std::stoi(words.at(1));
  std::string text;
  for (int i = 0; i < lines; ++i) {
    text += floodLine(i);
  }
  const TemporaryFolder folder;
  const std::string in = folder.path() / "in";
  const std::string out = folder.path() / "out";
  if (mkfifo(in.c_str(), 0600) != 0 || mkfifo(out.c_str(), 0600) != 0) {
    throw std::runtime_error("no pipes");
  }
  setenv("NEL_FLOOD_IN", in.c_str(), 1);
  setenv("NEL_FLOOD_OUT", out.c_str(), 1);
  const Watcher watcher;
  Subject subject(watcher, describe(words, 2), ownDisplay());
  subject.pause(kStartTail);
  const Window picture = watcher.largestInside(subject.window());
  const auto start = Subject::Clock::now();
  std::ofstream(in) << text;
  std::string answer;
  std::getline(std::ifstream(out) >> std::ws, answer);
  const auto end = watcher.awaitStill(picture, subject.pauser(), kFloodPatience);
  std::printf("flood_ms %.0f\n", std::chrono::duration<double, std::milli>(end - start).count());
}

}  // namespace

int main(int argc, char** argv) {
  return runProbe({{"start", measureStart},
                   {"idle", measureIdle},
                   {"replies", measureReplies},
                   {"flood", measureFlood}},
                  argc, argv);
}
