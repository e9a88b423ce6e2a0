#include "gdb/process/channel.h"

#include <array>
#include <cerrno>

namespace gdb {

namespace {

bool isPassing(int error) {
  return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

}  // namespace

std::string Channel::read(std::size_t most) {
  std::string bytes;
  std::array<char, 16384> buffer;
  while (!ended && bytes.size() < most) {
    const ssize_t count = ::read(connection.get(), buffer.data(), buffer.size());
    if (count > 0) {
      bytes.append(buffer.data(), static_cast<std::size_t>(count));
      continue;
    }
    ended = count == 0 || !isPassing(errno);
    if (count == 0 || errno != EINTR) {
      break;
    }
  }
  return bytes;
}

void Channel::write(std::string_view bytes) {
  waiting += bytes;
  flush();
}

void Channel::flush() {
  while (hasToWrite()) {
    const ssize_t count = ::write(connection.get(), waiting.data(), waiting.size());
    if (count > 0) {
      waiting.erase(0, static_cast<std::size_t>(count));
      continue;
    }
    ended = count < 0 && !isPassing(errno);
    if (count == 0 || errno != EINTR) {
      return;
    }
  }
}

}  // namespace gdb
