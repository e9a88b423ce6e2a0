// Signals as flags. The handler runs on the one thread there is, at any moment; it touches only
// the word of flags and the descriptor that wakes a sleeping tool, and leaves errno as it found it.

#include "link/signal_client.h"

#include <sys/eventfd.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <string_view>

namespace {

std::atomic<int> signalFlags{0};
static_assert(std::atomic<int>::is_always_lock_free, "the signal handler sets flags");

// An event counter; like the handlers, it stays until the process ends.
std::atomic<int> wakeCounter{-1};
std::atomic<bool> isWakeRaised{false};

struct SignalRow {
  int signal;
  int flag;                        // 0: caught and ignored
  std::string_view installText;    // when the first installation fails
  std::string_view reinstallText;  // when a later one fails; empty: none is made
};

// In the order of installation. Intended in the texts: the letter n in place of a line end, and
// the missing points.
constexpr std::array kSignalsOfTheLink = {
    SignalRow{SIGHUP, 0, "Error while setting CatchSignalsClient SIGHUP.\n", ""},
    SignalRow{SIGPIPE, kFlagPipe, "Error while setting CatchSignalsClient SIGPIPE.\n",
              "Error while setting CatchSignalsClient SIGPIPE again in SignalHandler.\n"},
    SignalRow{SIGINT, kFlagInterrupt, "Error while setting CatchSignalsClient SIGINT.\n",
              "Error while setting CatchSignalsClient SIGINT.\n"},
    SignalRow{SIGQUIT, 0, "Error while setting CatchSignalsClient SIGQUITn",
              "Error while setting CatchSignalsClient SIGQUIT.\n"},
    SignalRow{SIGTERM, 0, "Error while setting CatchSignalsClient SIGTERM\n",
              "Error while setting CatchSignalsClient SIGTERM.\n"},
    SignalRow{SIGCHLD, kFlagChild, "Error while setting CatchSignalsClient SIGCLD\n",
              "Error while setting CatchSignalsClient SIGCLD.\n"},
};
constexpr SignalRow kAlarm{SIGALRM, kFlagAlarm, "Error while setting CatchSignalsClient SIGALRM.\n",
                           "Error while setting CatchSignalsClient SIGALRM.\n"};

const SignalRow* rowOf(int signal) {
  if (signal == kAlarm.signal) {
    return &kAlarm;
  }
  for (const SignalRow& row : kSignalsOfTheLink) {
    if (row.signal == signal) {
      return &row;
    }
  }
  return nullptr;
}

// Safe within a signal handler.
void install(int signal, std::string_view failureText) {
  if (std::signal(signal, CatchSignalsClient::SignalHandler) == SIG_ERR) {
    [[maybe_unused]] const ssize_t written =
        write(STDERR_FILENO, failureText.data(), failureText.size());
  }
}

// Safe within a signal handler.
void raiseWake() {
  isWakeRaised.store(true);
  const std::uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(wakeCounter.load(), &one, sizeof one);
}

void clearFlag(int flag) {
  signalFlags.fetch_and(~flag);
}

}  // namespace

CatchSignalsClient::CatchSignalsClient() {
  if (wakeCounter.load() < 0) {
    wakeCounter.store(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC));
  }
  signalFlags.store(0);
  for (const SignalRow& row : kSignalsOfTheLink) {
    install(row.signal, row.installText);
  }
}

void CatchSignalsClient::SignalHandler(int signal) {
  const SignalRow* const row = rowOf(signal);
  if (row == nullptr || row->reinstallText.empty()) {
    return;
  }
  const int error = errno;
  if (signal == SIGCHLD) {
    // Reaps one child, and does not block when a child only stopped.
    waitpid(-1, nullptr, WNOHANG);
  }
  if (row->flag != 0) {
    signalFlags.fetch_or(row->flag);
    raiseWake();
  }
  install(signal, row->reinstallText);
  errno = error;
}

int CatchSignalsClient::GetSignalFlags() const {
  return signalFlags.load();
}

int CatchSignalsClient::wakeDescriptor() {
  return wakeCounter.load();
}

void CatchSignalsClient::muteWake() {
  if (isWakeRaised.exchange(false)) {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = read(wakeCounter.load(), &count, sizeof count);
  }
}

int CatchSignalsClient::ArmTimer(int seconds) {
  install(kAlarm.signal, kAlarm.installText);
  clearFlag(kFlagAlarm);
  alarm(static_cast<unsigned>(seconds));
  return 1;
}

int CatchSignalsClient::CancelTimer() {
  alarm(0);
  clearFlag(kFlagAlarm);
  return 1;
}

int CatchSignalsClient::TimerFired() {
  if (signalFlags.load() == 0) {
    return 0;
  }
  // Intended: any flag counts as fired, but only the alarm's is cleared.
  clearFlag(kFlagAlarm);
  return 1;
}
