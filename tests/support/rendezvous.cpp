#include "tests/support/rendezvous.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "tests/support/deadline.h"

namespace {

constexpr int kFirstPort = 4000;
constexpr int kPortCount = 1000;
constexpr Milliseconds kLookEvery{10};

[[noreturn]] void throwSystemError(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

/// A living Postmaster keeps its port file locked.
bool isAnotherPostmasterThere() {
  const UniqueDescriptor file(::open(kPortFile.c_str(), O_RDONLY | O_CLOEXEC));
  return file.isOpen() && ::flock(file.get(), LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

void awaitNoOtherPostmaster() {
  const Deadline deadline(kAnswerTime);
  while (isAnotherPostmasterThere()) {
    if (deadline.hasPassed()) {
      throw std::runtime_error("another Postmaster runs on this machine");
    }
    std::this_thread::sleep_for(kLookEvery);
  }
}

}  // namespace

Rendezvous::Rendezvous()
    : port(kFirstPort + ::getpid() % kPortCount),
      socketPath(kRendezvousPrefix + std::to_string(port) + "." + std::to_string(::getpid())) {
  listen();
  publishPort();
}

Rendezvous::~Rendezvous() {
  ::unlink(socketPath.c_str());
  ::unlink(kPortFile.c_str());
}

UniqueDescriptor Rendezvous::accept() const {
  return UniqueDescriptor(
      ::accept4(listening.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
}

void Rendezvous::listen() {
  listening = UniqueDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  socketPath.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  ::unlink(socketPath.c_str());
  if (::bind(listening.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listening.get(), 1) != 0) {
    throwSystemError("cannot listen at " + socketPath);
  }
}

void Rendezvous::publishPort() const {
  awaitNoOtherPostmaster();
  ::unlink(kPortFile.c_str());
  std::ofstream file(kPortFile);
  file << port << std::endl;
  if (!file) {
    throwSystemError("cannot write " + kPortFile);
  }
}
