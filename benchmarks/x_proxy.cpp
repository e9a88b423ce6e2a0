// One poll loop carries the bytes of all connections. What is read waits in a queue with the time
// at which it is due at the other end. Nothing is held back but for that time: a program that does
// not read keeps its bytes here.

#include "benchmarks/x_proxy.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <deque>
#include <list>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kFirstNumber = 200;
constexpr int kLastNumber = 300;

std::string socketPath(const std::string& number) {
  return "/tmp/.X11-unix/X" + number;
}

sockaddr_un addressOf(const std::string& path) {
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof address.sun_path - 1);
  return address;
}

const sockaddr* plain(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

/// Counts replies in what a server sends (X protocol, chapters 1 and 8): the answer to the
/// connection, then packets of 32 bytes, of which replies and generic events may be longer.
class ReplyCounter {
 public:
  std::uint64_t count(const char* bytes, std::size_t size) {
    std::uint64_t replies = 0;
    while (size > 0) {
      const std::size_t taken = std::min(size, skip > 0 ? skip : headSize() - head.size());
      if (skip > 0) {
        skip -= taken;
      } else {
        head.insert(head.end(), bytes, bytes + taken);
        replies += headSize() == head.size() ? finishHead() : 0;
      }
      bytes += taken;
      size -= taken;
    }
    return replies;
  }

 private:
  static constexpr std::size_t kUnit = 4;
  static constexpr std::size_t kSetupHead = 8;
  static constexpr std::size_t kPacket = 32;

  std::size_t headSize() const { return isConnected ? kPacket : kSetupHead; }

  std::uint64_t finishHead() {
    constexpr char kReply = 1;
    constexpr char kGenericEvent = 35;
    constexpr char kSentFlag = static_cast<char>(0x80);
    const char kind = static_cast<char>(head[0] & ~kSentFlag);
    std::uint64_t replies = 0;
    if (!std::exchange(isConnected, true)) {
      std::uint16_t units = 0;
      std::memcpy(&units, head.data() + kSetupHead - sizeof units, sizeof units);
      skip = units * kUnit;
    } else if (kind == kReply || kind == kGenericEvent) {
      std::uint32_t units = 0;
      std::memcpy(&units, head.data() + kUnit, sizeof units);
      skip = units * kUnit;
      replies = kind == kReply ? 1 : 0;
    }
    head.clear();
    return replies;
  }

  bool isConnected = false;
  std::vector<char> head;
  std::size_t skip = 0;  // bytes that follow the head
};

/// One direction of a connection.
class Stream {
 public:
  Stream(int source, int sink) : from(source), to(sink) {}

  int source() const { return from; }
  int sink() const { return to; }

  /// What has just been read; empty when nothing was there, nothing at the end of the stream.
  std::optional<std::string> read(Clock::time_point due) {
    std::array<char, 65536> room;
    const ssize_t count = ::recv(from, room.data(), room.size(), MSG_DONTWAIT);
    if (count < 0 && errno == EAGAIN) {
      return std::string();
    }
    if (count <= 0) {
      return std::nullopt;
    }
    waiting.emplace_back(due, std::string(room.data(), static_cast<std::size_t>(count)));
    return waiting.back().second;
  }

  /// When the next bytes are due.
  std::optional<Clock::time_point> nextDue() const {
    return waiting.empty() ? std::nullopt : std::optional(waiting.front().first);
  }

  /// Passes on what is due; false when the other end has gone.
  bool write(Clock::time_point now) {
    while (!waiting.empty() && waiting.front().first <= now) {
      std::string& bytes = waiting.front().second;
      const ssize_t count = ::send(to, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
      if (count < 0) {
        return errno == EAGAIN;
      }
      bytes.erase(0, static_cast<std::size_t>(count));
      if (!bytes.empty()) {
        return true;
      }
      waiting.pop_front();
    }
    return true;
  }

 private:
  int from;
  int to;
  std::deque<std::pair<Clock::time_point, std::string>> waiting;
};

class Connection {
 public:
  Connection(int clientSocket, int serverSocket)
      : client(clientSocket),
        server(serverSocket),
        requests(client, server),
        answers(server, client) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() {
    ::close(client);
    ::close(server);
  }

  /// Moves what can be moved; false at the end of the connection.
  bool serve(std::chrono::milliseconds delay, std::atomic<std::uint64_t>& replies) {
    const auto now = Clock::now();
    const auto asked = requests.read(now + delay);
    const auto answered = answers.read(now + delay);
    if (answered) {
      replies += counter.count(answered->data(), answered->size());
    }
    return asked && answered && requests.write(now) && answers.write(now);
  }

  /// Adds what this connection waits for; `next` becomes the earliest time at which bytes are due.
  void addTo(std::vector<pollfd>& polled, std::optional<Clock::time_point>& next) const {
    const auto now = Clock::now();
    for (const Stream* stream : {&requests, &answers}) {
      polled.push_back({stream->source(), POLLIN, 0});
      const auto due = stream->nextDue();
      if (due && *due <= now) {
        polled.push_back({stream->sink(), POLLOUT, 0});
      } else if (due && (!next || *due < *next)) {
        next = due;
      }
    }
  }

 private:
  int client;
  int server;
  Stream requests;
  Stream answers;
  ReplyCounter counter;
};

int connectTo(const std::string& path) {
  const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_un address = addressOf(path);
  if (fd >= 0 && ::connect(fd, plain(address), sizeof address) != 0) {
    ::close(fd);
    return -1;
  }
  return fd;
}

void wait(std::vector<pollfd>& polled, const std::optional<Clock::time_point>& next) {
  timespec limit = {};
  if (next) {
    const auto left = std::max(*next - Clock::now(), Clock::duration::zero());
    limit.tv_sec = std::chrono::duration_cast<std::chrono::seconds>(left).count();
    limit.tv_nsec = (left % std::chrono::seconds(1)).count();
  }
  ::ppoll(polled.data(), polled.size(), next ? &limit : nullptr, nullptr);
}

}  // namespace

XProxy::XProxy(const std::string& target)
    : targetPath(socketPath(target.substr(target.find(':') + 1))) {
  targetPath.erase(std::min(targetPath.find('.', targetPath.rfind('/')), targetPath.size()));
  listen();
  wakeUp = ::eventfd(0, EFD_CLOEXEC);
  worker = std::thread([this] { work(); });
}

XProxy::~XProxy() {
  const std::uint64_t one = 1;
  if (::write(wakeUp, &one, sizeof one) == sizeof one) {
    worker.join();
  }
  ::close(wakeUp);
  ::close(listener);
  ::unlink(socketPath(std::to_string(number)).c_str());
}

void XProxy::listen() {
  for (number = kFirstNumber; number < kLastNumber; ++number) {
    listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_un address = addressOf(socketPath(std::to_string(number)));
    if (::bind(listener, plain(address), sizeof address) == 0 &&
        ::listen(listener, SOMAXCONN) == 0) {
      return;
    }
    ::close(listener);
  }
  throw std::runtime_error("no display number is free");
}

void XProxy::work() {
  std::list<Connection> connections;
  for (;;) {
    std::vector<pollfd> polled = {{wakeUp, POLLIN, 0}, {listener, POLLIN, 0}};
    std::optional<Clock::time_point> next;
    for (const Connection& connection : connections) {
      connection.addTo(polled, next);
    }
    wait(polled, next);
    if (polled[0].revents != 0) {
      return;
    }
    if (polled[1].revents != 0) {
      const int client = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
      const int server = client < 0 ? -1 : connectTo(targetPath);
      if (server >= 0) {
        connections.emplace_back(client, server);
      } else if (client >= 0) {
        ::close(client);
      }
    }
    connections.remove_if(
        [this](Connection& connection) { return !connection.serve(delay.load(), replyCount); });
  }
}
