// The link's socket: connecting, sending a frame, assembling frames from what is read.
//
// Several habits here look like slips and are agreed behaviour on which the tool's state machine
// depends; each carries its remark.

#include "link/socket_client.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "link/port_control.h"

namespace {

constexpr int kBriefMicroseconds = 10;
constexpr int kWatchedDescriptors = 32;
constexpr char kAddressFiller = '0';

bool clientWasMade = false;
bool brokenWasReported = false;

int connectUnix(int port, int fd) {
  sockaddr_un address;
  std::memset(&address, kAddressFiller, sizeof address);
  const std::string name = socketFileName(port, getppid());
  if (name.size() >= sizeof address.sun_path) {
    errno = ENAMETOOLONG;
    return -1;
  }
  std::memcpy(address.sun_path, name.c_str(), name.size() + 1);
  address.sun_family = AF_UNIX;
  return connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

int connectInternet(const char* host, int port, int fd) {
  sockaddr_in address;
  std::memset(&address, kAddressFiller, sizeof address);
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = inet_addr(host);
  return connect(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

// A read that has nothing to wait on takes the brief time all the same: a tool that polls without
// a connection does not keep the processor busy, and its alarm comes during the read.
void pauseBriefly() {
  timeval limit{0, kBriefMicroseconds};
  select(0, nullptr, nullptr, nullptr, &limit);
}

}  // namespace

SocketControlClient::SocketControlClient() try {
  if (clientWasMade) {
    std::fprintf(stderr, "PROCESS(PID=%d): INTERNAL FATAL ERROR:#101. Exit !\n", getpid());
    std::exit(kExitSecondClient);
  }
  clientWasMade = true;
  const PortControlClient portControl;
  socket = SockCreate();
  if (socket < 0) {
    std::fprintf(stderr,
                 "PROCESS(%d):**ERR: When trying initialization of connection - no connection to "
                 "Tessil Postmaster !!\n",
                 getpid());
    return;
  }
  port = portControl.GetPortNumberClient();
  if (port == 0) {
    // Intended: goes on all the same, with the name for port 0.
    std::fprintf(stderr,
                 "PROCESS(%d):**ERR: Cannot connect with Tessil Postmaster (no free port "
                 "available).\n",
                 getpid());
  }
  connectResult = SockOpenCl(&domain, "", port, socket);
  if (connectResult < 0) {
    std::fprintf(stderr,
                 "PROCESS(%d):**ERR: When trying to open connection - no connection to server !!\n",
                 getpid());
    SockCloseCl(&domain, socket, port);
    // The number of a closed descriptor may soon be another file's.
    socket = -1;
  }
} catch (...) {
  // Unwound: this process's own file beside the port file goes too; the exception goes on.
  unlink((portFileName() + "." + std::to_string(getpid())).c_str());
}

SocketControlClient::SocketControlClient(int connectedSocket)
    : socket(connectedSocket), connectResult(0) {}

int SocketControlClient::SockCreate() const {
  return ::socket(domain == kUnixDomain ? AF_UNIX : AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

int SocketControlClient::SockOpenCl(const int* domain, const char* host, int port, int fd) {
  const int result =
      *domain == kUnixDomain ? connectUnix(port, fd) : connectInternet(host, port, fd);
  if (result < 0) {
    const int error = errno;
    std::fprintf(stderr,
                 "PROCESS(PID=%d):**ERR: When trying to connect to Tessil Postmaster "
                 "(SockOpenCl)-Errno=%d %s\n",
                 getpid(), error, std::strerror(error));
  }
  return result;
}

int SocketControlClient::SockCloseCl(const int* domain, int fd, int port) {
  // Intended order: the result is that of the second call, on the closed descriptor.
  close(fd);
  const int result = shutdown(fd, SHUT_RDWR);
  if (*domain == kUnixDomain) {
    unlink(socketFileName(port, getppid()).c_str());
  }
  return result < 0 ? -1 : result;
}

int SocketControlClient::SockSend(int fd, const void* frame, int length) {
  if (broken) {
    if (!brokenWasReported) {
      std::fputs("Can't send message, as there was a broken connection.\n", stderr);
      brokenWasReported = true;
    }
    return -1;
  }
  const ssize_t count = send(fd, frame, static_cast<std::size_t>(length), 0);
  // Intended: errno is not cleared before the send and is tested whatever the send returned, so
  // an EPIPE left by an earlier call counts.
  if (errno == EPIPE) {
    std::fprintf(stderr, "PROCESS:%d:No connection to Tessil Postmaster. Continuing.\n", getpid());
    broken = true;
  }
  return count == length ? length : -1;
}

bool SocketControlClient::isFrontTooLong(int capacity) {
  const std::size_t room = capacity < 0 ? 0 : static_cast<std::size_t>(capacity);
  const std::size_t length = buffer.frameLength();
  // Without a NUL the first frame is longer than all that is stored.
  return length > room || (length == 0 && buffer.bytesStored() > room);
}

int SocketControlClient::takeFrame(void* out, int capacity, const char* tooLongText) {
  if (isFrontTooLong(capacity)) {
    // Intended: the frame stays, so each later poll reports it again. None reads on, so that what
    // can never get through does not fill the memory.
    std::fprintf(stderr, tooLongText, getpid());
    return -1;
  }
  const std::size_t length = buffer.frameLength();
  if (length == 0) {
    return 0;
  }
  std::memcpy(out, buffer.FrameBufferPeek(), length);
  buffer.FrameBufferDrop();
  return static_cast<int>(length);
}

int SocketControlClient::SockRead(int fd, void* out, int capacity, int wait) {
  const int buffered =
      takeFrame(out, capacity, "PROCESS(PID=%d):INTERNAL ERROR:Buffersize problem. Continuing.\n");
  if (buffered != 0) {
    return buffered;
  }
  if (fd < 0) {
    pauseBriefly();
    return -1;
  }
  if (const int ready = SockWait(fd, wait); ready < 0) {
    if (ready == kWaitFailed) {
      pauseBriefly();
    }
    return ready;
  }
  const ssize_t count = read(fd, out, static_cast<std::size_t>(capacity));
  ended = count == 0 || (count < 0 && errno != EINTR);
  if (count <= 0) {
    return static_cast<int>(count);
  }
  const auto* const bytes = static_cast<const char*>(out);
  const void* const end = buffer.bytesStored() == 0
                              ? std::memchr(bytes, '\0', static_cast<std::size_t>(count))
                              : nullptr;
  if (end != nullptr) {
    // As nearly always: the frame begins with this read, and is where it is to be.
    const auto length = static_cast<int>(static_cast<const char*>(end) - bytes) + 1;
    buffer.FrameBufferAppend(bytes + length, static_cast<int>(count) - length);
    return length;
  }
  buffer.FrameBufferAppend(bytes, static_cast<int>(count));
  // Intended: this text differs from the one above and ends in a backslash and the letter n.
  return takeFrame(out, capacity,
                   "PROCESS(PID=%d): INTERNAL ERROR:Buffersize problem. Continuing.\\n");
}

SocketInput SocketControlClient::pendingInput(int fd, int capacity) {
  if (isFrontTooLong(capacity)) {
    return SocketInput::kStuck;
  }
  if (buffer.frameLength() > 0) {
    return SocketInput::kThere;
  }
  pollfd entry{awaitable(fd), POLLIN, 0};
  const bool isReadable = poll(&entry, 1, 0) > 0 && (entry.revents & POLLIN) != 0;
  return isReadable ? SocketInput::kThere : SocketInput::kNone;
}

int SocketControlClient::awaitable(int fd) const {
  return ended || fd >= kWatchedDescriptors ? -1 : fd;
}

int SocketControlClient::SockWait(int fd, int wait) {
  fd_set readable;
  FD_ZERO(&readable);
  if (fd >= 0 && fd < FD_SETSIZE) {
    FD_SET(fd, &readable);
  }
  timeval limit{};
  if (wait == kWaitBriefly) {
    limit.tv_usec = kBriefMicroseconds;
  } else {
    limit.tv_sec = wait;
  }
  const int ready = select(kWatchedDescriptors, &readable, nullptr, nullptr,
                           wait == kWaitForever ? nullptr : &limit);
  if (ready < 0) {
    return kWaitFailed;
  }
  return ready == 0 ? kWaitTimedOut : ready;
}

void SocketControlClient::unlinkSocketFile() const {
  unlink(socketFileName(port, postmaster).c_str());
}
