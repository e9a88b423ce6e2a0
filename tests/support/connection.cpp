#include "tests/support/connection.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>

Connection::Connection(const std::string& path)
    : socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  path.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  if (::connect(fd(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    close();
  }
}

int Connection::send(std::string_view& bytes) const {
  while (!bytes.empty()) {
    const ssize_t count = ::send(fd(), bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count < 0) {
      return errno == EAGAIN ? 0 : errno;
    }
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

void Connection::read() {
  std::array<char, 65536> chunk;
  ssize_t count = 0;
  while ((count = ::recv(fd(), chunk.data(), chunk.size(), MSG_DONTWAIT)) > 0) {
    received.append(chunk.data(), static_cast<std::size_t>(count));
  }
  ended = ended || count == 0 || errno == ECONNRESET;
}

std::optional<std::string> Connection::take() {
  const std::size_t end = received.find('\0');
  if (end == std::string::npos) {
    return std::nullopt;
  }
  std::string frame = received.substr(0, end);
  received.erase(0, end + 1);
  return frame;
}
