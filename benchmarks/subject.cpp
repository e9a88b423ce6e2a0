#include "benchmarks/subject.h"

#include <stdexcept>
#include <thread>

namespace {

constexpr std::chrono::seconds kPatience{30};

}  // namespace

Subject::Subject(const Watcher& watcher, const SubjectDescription& description,
                 const std::string& display)
    : eyes(watcher),
      owned(description.process == kWindowProcess ? std::make_unique<BenchPostmaster>() : nullptr),
      started(Clock::now()),
      program(description.command, display) {
  for (const auto end = Clock::now() + kPatience; mainWindow == 0;
       mainWindow = eyes.find(description.title)) {
    if (Clock::now() > end || !program.isRunning()) {
      throw std::runtime_error("no window " + description.title);
    }
    pause(kLookEvery);
  }
  drawn = eyes.awaitStill(mainWindow, pauser(), kPatience);
  measured = findProcess(program.id(), description.process);
  if (measured == 0) {
    throw std::runtime_error("no process " + description.process);
  }
}

void Subject::pause(std::chrono::milliseconds time) {
  if (owned != nullptr) {
    owned->pause(time);
  } else {
    std::this_thread::sleep_for(time);
  }
}

void Subject::settle() {
  eyes.awaitStill(mainWindow, pauser(), kPatience);
}
