#include "postmaster/signal_source.h"

#include <sys/signalfd.h>

#include <csignal>

namespace postmaster {

SignalSource::SignalSource() {
  signal(SIGPIPE, SIG_IGN);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGINT);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGCHLD);
  struct sigaction hangUp {};
  sigaction(SIGHUP, nullptr, &hangUp);
  if (hangUp.sa_handler != SIG_IGN) {
    sigaddset(&signals, SIGHUP);
  }
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  source = UniqueFd(signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC));
}

SignalSource::Arrived SignalSource::take() {
  Arrived arrived;
  signalfd_siginfo info{};
  while (read(source.get(), &info, sizeof info) == static_cast<ssize_t>(sizeof info)) {
    if (info.ssi_signo == SIGCHLD) {
      arrived.childEnded = true;
    } else {
      arrived.stop = true;
    }
  }
  return arrived;
}

}  // namespace postmaster
