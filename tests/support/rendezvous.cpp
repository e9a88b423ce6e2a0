#include "tests/support/rendezvous.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <fstream>
#include <system_error>

#include "link/port_control.h"

Rendezvous::Rendezvous()
    : socketPath(socketFileName(kPort, ::getpid())),
      listening(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0)) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  socketPath.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  if (::bind(listener(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      ::listen(listener(), 1) != 0 || !(std::ofstream(portFileName()) << kPort << std::endl)) {
    throw std::system_error(errno, std::generic_category(), "no rendezvous at " + socketPath);
  }
}

UniqueDescriptor Rendezvous::accept() const {
  return UniqueDescriptor(::accept4(listener(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
}
