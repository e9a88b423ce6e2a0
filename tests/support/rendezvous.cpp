#include "tests/support/rendezvous.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>
#include <system_error>

#include "link/port_control.h"

namespace {

constexpr int kFirstPort = 4000;
constexpr int kPortCount = 1000;

[[noreturn]] void throwSystemError(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

Rendezvous::Rendezvous()
    : port(kFirstPort + ::getpid() % kPortCount), socketPath(socketFileName(port, ::getpid())) {
  listen();
  publishPort();
}

Rendezvous::~Rendezvous() {
  ::unlink(socketPath.c_str());
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
  std::ofstream file(portFileName());
  file << port << std::endl;
  if (!file) {
    throwSystemError("cannot write " + portFileName());
  }
}
