#include "postmaster/postmaster.h"

#include "link/message_numbers.h"
#include "support/version.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace postmaster {

namespace {

std::string ownFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

std::string searchPath() {
  const char* path = std::getenv("PATH");
  return path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin";
}

ShutdownSequence::TimePoint now() {
  return std::chrono::steady_clock::now();
}

}  // namespace

Postmaster::Postmaster(Options asked, Complaints& complaintsOut)
    : options(std::move(asked)), complaints(complaintsOut) {}

int Postmaster::run() {
  if (!prepare()) {
    return kExitFailure;
  }
  if (!startTools()) {
    status = kExitFailure;
    end(ShutdownReason::kToolNotStarted);
  }
  loop();
  return status;
}

bool Postmaster::prepare() {
  for (const ToolCommand& tool : options.tools) {
    const std::optional<std::string> program = findProgram(tool.front(), ownFolder(), searchPath());
    if (!program) {
      complaints.say("cannot start " + tool.front() + ": no such program");
      return false;
    }
    programs.push_back(*program);
  }
  if (!options.traceFile.empty()) {
    if (const std::string why = trace.open(options.traceFile); !why.empty()) {
      complaints.say("cannot write the trace to " + why);
      return false;
    }
  }
  if (const std::string why = rendezvous.open(); !why.empty()) {
    complaints.say(why);
    return false;
  }
  const std::string pid = std::to_string(getpid());
  const Identity identity{getpid(), rendezvous.port(),
                          std::string("NELMPM ") + kProductVersion + " (PID=" + pid + ")"};
  switchboard = std::make_unique<Switchboard>(identity, complaints, trace);
  return true;
}

bool Postmaster::startTools() {
  for (std::size_t i = 0; i < options.tools.size(); ++i) {
    const std::string why = children.start(programs[i], options.tools[i]);
    if (!why.empty()) {
      complaints.say("cannot start " + programs[i] + ": " + why);
      return false;
    }
  }
  return true;
}

void Postmaster::loop() {
  std::vector<pollfd> entries;
  while (!finished) {
    wait(entries);
    for (const pollfd& entry : entries) {
      switchboard->serve(entry);
    }
    if (rendezvous.listener() >= 0) {
      switchboard->acceptAll(rendezvous.listener());
    }
    takeSignals();
    if (!shutdown.isRunning() && switchboard->state().uiHasLeft()) {
      end(ShutdownReason::kUiLeft);
    }
    if (switchboard->takeDepartures()) {
      keepNameAlive();
    }
    advanceShutdown();
  }
}

void Postmaster::wait(std::vector<pollfd>& entries) const {
  entries.clear();
  entries.push_back({signals.fd(), POLLIN, 0});
  if (rendezvous.listener() >= 0) {
    entries.push_back({rendezvous.listener(), POLLIN, 0});
  }
  switchboard->appendPollEntries(entries);
  if (poll(entries.data(), entries.size(), millisecondsToWait()) < 0) {
    for (pollfd& entry : entries) {
      entry.revents = 0;
    }
  }
}

// Rounded up, so that the loop does not turn while the last part of a millisecond passes.
int Postmaster::millisecondsToWait() const {
  const std::optional<ShutdownSequence::TimePoint> deadline = shutdown.deadline();
  if (!deadline) {
    return -1;
  }
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - now());
  return std::max(0, static_cast<int>(left.count()));
}

void Postmaster::takeSignals() {
  const SignalSource::Arrived arrived = signals.take();
  if (arrived.childEnded) {
    reapChildren();
  }
  if (arrived.stop && shutdown.isRunning()) {
    shutdown.hasten(now());
  } else if (arrived.stop) {
    end(ShutdownReason::kSignal);
  }
}

void Postmaster::reapChildren() {
  for (const Children::Ended& child : children.reap()) {
    const bool wasUi = switchboard->toolTypeOf(child.pid) == NELKVUI;
    if (child.waitStatus != 0 && !forcing) {
      complaints.say(child.name + " (process " + std::to_string(child.pid) + ") " +
                     describeEnd(child.waitStatus));
    }
    switchboard->processEnded(child.pid);
    keepNameAlive();
    if (shutdown.isRunning()) {
      continue;
    }
    if (wasUi || switchboard->state().uiHasLeft()) {
      end(ShutdownReason::kUiLeft);
    } else if (!canUiStillCome()) {
      complaints.say("no user interface came, and no tool is left that could be one");
      status = kExitFailure;
      end(ShutdownReason::kNoUiComing);
    }
  }
}

bool Postmaster::canUiStillCome() const {
  const std::vector<pid_t> living = children.living();
  return switchboard->state().uiIsConnected() ||
         std::any_of(living.begin(), living.end(),
                     [this](pid_t pid) { return switchboard->toolTypeOf(pid) == 0; });
}

// A tool removes the listening socket's name when it leaves; the others may still have to find it.
void Postmaster::keepNameAlive() {
  if (shutdown.isRunning() || !rendezvous.isNameLost()) {
    return;
  }
  switchboard->acceptAll(rendezvous.listener());
  if (const std::string why = rendezvous.renew(); !why.empty()) {
    complaints.say(why);
  }
}

void Postmaster::end(ShutdownReason reason) {
  rendezvous.close();
  switchboard->shutDown(reason, static_cast<int>(ShutdownSequence::kAnswerTime.count()));
  shutdown.begin(now());
}

void Postmaster::advanceShutdown() {
  while (true) {
    const ShutdownSequence::Situation situation{switchboard->state().allAnswered(),
                                                !children.isEmpty(), !switchboard->isEmpty()};
    switch (shutdown.advance(now(), situation)) {
      case ShutdownSequence::Action::kNone:
        return;
      case ShutdownSequence::Action::kOrderSilentTools:
        forcing = switchboard->shutDownNow(Router::Targets::kSilent);
        break;
      case ShutdownSequence::Action::kTerminate:
        forcing = true;
        switchboard->shutDownNow(Router::Targets::kAll);
        children.signalAll(SIGTERM);
        break;
      case ShutdownSequence::Action::kKill:
        children.signalAll(SIGKILL);
        break;
      case ShutdownSequence::Action::kFinish:
        finished = true;
        return;
    }
  }
}

}  // namespace postmaster
