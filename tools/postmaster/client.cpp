#include "postmaster/client.h"

#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <utility>

namespace postmaster {

namespace {

constexpr std::size_t kReadBytes = std::size_t{64} * 1024;

bool wouldBlock() {
  return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
}

pid_t peerOf(int socket) {
  ucred credentials{};
  socklen_t size = sizeof credentials;
  const int failed = getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &credentials, &size);
  return failed != 0 ? 0 : credentials.pid;
}

}  // namespace

Client::Client(UniqueFd connected) : socket(std::move(connected)), peer(peerOf(socket.get())) {}

Client::ReadResult Client::read() {
  std::array<char, kReadBytes> bytes;
  const ssize_t count = ::recv(socket.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (count > 0) {
    splitter.append({bytes.data(), static_cast<std::size_t>(count)});
    return ReadResult::kSome;
  }
  return count < 0 && wouldBlock() ? ReadResult::kNothing : ReadResult::kEnd;
}

bool Client::send(std::string_view text) {
  if (queuedBytes() + text.size() > kMaxQueuedBytes) {
    return false;
  }
  if (sent > queue.size() / 2) {
    queue.erase(0, std::exchange(sent, 0));
  }
  queue += text;
  // A broken connection shows in reading as well, after what the client sent last.
  flush();
  return true;
}

bool Client::flush() {
  while (hasQueued()) {
    const ssize_t count =
        ::send(socket.get(), queue.data() + sent, queue.size() - sent, MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count < 0) {
      return wouldBlock();
    }
    sent += static_cast<std::size_t>(count);
  }
  queue.clear();
  sent = 0;
  return true;
}

}  // namespace postmaster
