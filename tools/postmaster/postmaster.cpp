#include "postmaster/postmaster.h"

#include "frames/recording.h"
#include "link/message_numbers.h"
#include "postmaster/transcript.h"
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

/// The X resource file of the user interface is found by itself, whether this program is installed
/// or not, unless the user has said where his is.
void offerResourceFile() {
  std::error_code error;
  const std::filesystem::path folder =
      (std::filesystem::path(ownFolder()) / NEL_DATA_FROM_BIN).lexically_normal();
  if (std::getenv("XAPPLRESDIR") == nullptr && std::getenv("nelwerk") == nullptr &&
      std::filesystem::exists(folder / "NEL2", error)) {
    setenv("XAPPLRESDIR", folder.c_str(), 0);
  }
}

std::string endText(const Children::Ended& ended) {
  return processText(ended.child.command.front(), ended.pid) + " " + describeEnd(ended.waitStatus);
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
  if (const std::string why = rendezvous.open(); !why.empty()) {
    complaints.say(why);
    return false;
  }
  // The recording before the files that are written: one of them may be its other name.
  std::set<int> played;
  if (!options.replay.file.empty() && !openReplay(played)) {
    return false;
  }
  // Not before: the files may be those of another Postmaster, which is running.
  if (!openFiles()) {
    return false;
  }
  Switchboard::WindowService service{nullptr, options.joinsTexts};
  if (!options.charset.empty()) {
    service.charset = Charset::open(options.charset);
  }
  const std::string pid = std::to_string(getpid());
  const Identity identity{getpid(), rendezvous.port(),
                          std::string("NELMPM ") + kProductVersion + " (PID=" + pid + ")"};
  switchboard = std::make_unique<Switchboard>(identity, complaints, witnesses, std::move(service));
  if (watch != nullptr) {
    care = std::make_unique<TesterCare>(children, *switchboard, *watch, complaints);
  }
  switchboard->playTools(std::move(played));
  for (const Message& command : history != nullptr ? history->messages() : std::vector<Message>{}) {
    switchboard->tellUser(command);
  }
  return true;
}

bool Postmaster::openReplay(std::set<int>& played) {
  const frames::LoadedRecording recording = frames::loadRecording(options.replay.file);
  if (!recording.fault.empty()) {
    complaints.say("cannot replay " + options.replay.file + ": " + recording.fault);
    return false;
  }
  if (!recording.damage.empty()) {
    complaints.say(options.replay.file + ": " + recording.damage);
  }
  ReplayScript script = scriptOf(recording.frames);
  played = script.tools;
  auto witness = std::make_unique<Replay>(std::move(script), options.replay, complaints);
  replay = witness.get();
  witnesses.push_back(std::move(witness));
  return true;
}

bool Postmaster::openFiles() {
  if (options.keepsButtons) {
    witnesses.push_back(std::make_unique<ButtonKeeper>(complaints));
  }
  if (options.restartsTester) {
    auto tester =
        std::make_unique<TesterWatch>(std::chrono::seconds(options.testerPatienceSeconds));
    watch = tester.get();
    witnesses.push_back(std::move(tester));
  }
  return addWitness<TraceLog>(options.traceFile) && addWitness<Recorder>(options.recordFile) &&
         addWitness<TranscriptLog>(options.transcriptFile) &&
         addWitness<History>(options.historyFile, &history);
}

/// A witness that writes to `fileName`, unless that is empty. False when it cannot be written.
template <class FileWitness>
bool Postmaster::addWitness(const std::string& fileName, FileWitness** added) {
  if (fileName.empty()) {
    return true;
  }
  auto witness = std::make_unique<FileWitness>(complaints);
  const std::string why = witness->open(fileName);
  if (!why.empty()) {
    complaints.say(why);
    return false;
  }
  if (added != nullptr) {
    *added = witness.get();
  }
  witnesses.push_back(std::move(witness));
  return true;
}

bool Postmaster::startTools() {
  offerResourceFile();
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
    playDue();
    takeSignals();
    if (care && !shutdown.isRunning()) {
      care->look();
    }
    noteThatNoUiCanCome();
    if (!shutdown.isRunning() && switchboard->state().uiHasLeft()) {
      end(ShutdownReason::kUiLeft);
    }
    if (switchboard->takeDepartures()) {
      keepNameAlive();
    }
    advanceShutdown();
  }
}

/// While the window takes what is due.
void Postmaster::playDue() {
  while (replay != nullptr && switchboard->canPlay()) {
    const Message message = replay->next();
    if (message == nullptr) {
      return;
    }
    switchboard->play(message);
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

/// The next moment at which something is to be done though nothing comes.
std::optional<ShutdownSequence::TimePoint> Postmaster::deadline() const {
  const bool isPlaying = replay != nullptr && !shutdown.isRunning() && switchboard->canPlay();
  if (isPlaying) {
    return replay->deadline();
  }
  return care && !shutdown.isRunning() ? care->deadline() : shutdown.deadline();
}

// Rounded up, so that the loop does not turn while the last part of a millisecond passes.
int Postmaster::millisecondsToWait() const {
  using std::chrono::milliseconds;
  constexpr milliseconds kLongest = std::chrono::hours{1};
  const std::optional<ShutdownSequence::TimePoint> next = deadline();
  if (!next) {
    return -1;
  }
  const auto left = std::chrono::ceil<milliseconds>(*next - now());
  return static_cast<int>(std::clamp(left, milliseconds{0}, kLongest).count());
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
    childEnded(child);
  }
}

void Postmaster::childEnded(const Children::Ended& ended) {
  const int type = switchboard->toolTypeOf(ended.pid);
  switchboard->processEnded(ended.pid);
  keepNameAlive();
  const bool isNews = ended.waitStatus != 0 && !forcing;
  if (isNews) {
    complaints.say(endText(ended));
  }
  if (care && !shutdown.isRunning() && care->isMissed(ended.pid)) {
    care->ended(ended, endText(ended));
  } else if (isNews && !shutdown.isRunning() && !switchboard->state().uiHasLeft()) {
    switchboard->warnUser("Korvane - Tool ended", endText(ended) + ".");
  }
  if (shutdown.isRunning()) {
    return;
  }
  if (type == NELKVUI || switchboard->state().uiHasLeft()) {
    end(ShutdownReason::kUiLeft);
  } else if (!canUiStillCome()) {
    complaints.say("no user interface came, and no tool is left that could be one");
    status = kExitFailure;
    end(ShutdownReason::kNoUiComing);
  }
}

void Postmaster::noteThatNoUiCanCome() {
  if (noUiTold || shutdown.isRunning() || options.tools.empty() ||
      switchboard->state().uiHasLeft() || canUiStillCome() || children.isEmpty()) {
    return;
  }
  noUiTold = true;
  complaints.say("none of the tools is a user interface, so no window can come");
}

bool Postmaster::haveAllAnswered() const {
  const std::vector<pid_t> living = children.living();
  return std::all_of(living.begin(), living.end(),
                     [this](pid_t pid) { return switchboard->hasAnswered(pid); });
}

void Postmaster::tellOfWaiting() {
  for (const pid_t pid : children.living()) {
    complaints.say("waits for " + processText(children.nameOf(pid), pid) +
                   ", which ends by itself; a further signal ends it at once");
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
  if (replay != nullptr && !replay->conclude()) {
    status = kExitFailure;
  }
  rendezvous.close();
  switchboard->shutDown(reason, static_cast<int>(ShutdownSequence::kAnswerTime.count()));
  shutdown.begin(now());
}

void Postmaster::advanceShutdown() {
  while (true) {
    const ShutdownSequence::Situation situation{switchboard->state().allAnswered(),
                                                !children.isEmpty(), haveAllAnswered(),
                                                !switchboard->isEmpty()};
    switch (shutdown.advance(now(), situation)) {
      case ShutdownSequence::Action::kNone:
        return;
      case ShutdownSequence::Action::kOrderSilentTools:
        forcing = switchboard->shutDownNow(Router::Targets::kSilent);
        break;
      case ShutdownSequence::Action::kTellOfWaiting:
        tellOfWaiting();
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
