// The port file is the lock: whoever holds it open and locked (flock) is the living Postmaster,
// and the lock goes with the process however it ends. The file appears under its name by link(),
// locked and with its contents, so that neither a tool nor another Postmaster ever sees half of
// it. A stale one is removed only by a process that has locked it, so two that start at once
// cannot remove each other's. A Postmaster that does not lock is known by its socket, which
// accepts a connection. No step follows a symbolic link or touches what another user owns.
#include "postmaster/rendezvous.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace postmaster {

namespace {

constexpr int kFirstPort = 1024;
constexpr int kPortCount = 60000;
constexpr int kAttempts = 100;
constexpr int kBacklog = 16;
constexpr mode_t kOwnersAlone = S_IRUSR | S_IWUSR;

std::string errorText(const std::string& what) {
  return what + ": " + std::strerror(errno);
}

bool fillAddress(const std::string& path, sockaddr_un& address) {
  address = {};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    errno = ENAMETOOLONG;
    return false;
  }
  path.copy(address.sun_path, path.size());
  return true;
}

const sockaddr* asGeneric(const sockaddr_un& address) {
  return reinterpret_cast<const sockaddr*>(&address);
}

UniqueDescriptor streamSocket() {
  return UniqueDescriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
}

/// Binds without leaving the name open to others for a moment.
bool bindOwnerOnly(int socket, const sockaddr_un& address) {
  const mode_t before = umask(S_IXUSR | S_IRWXG | S_IRWXO);
  const int result = bind(socket, asGeneric(address), sizeof address);
  umask(before);
  return result == 0;
}

/// Whether someone listens at `path`. A full queue of connections is a listener too.
bool isListening(const std::string& path) {
  sockaddr_un address{};
  const UniqueDescriptor probe = streamSocket();
  return fillAddress(path, address) &&
         (connect(probe.get(), asGeneric(address), sizeof address) == 0 || errno == EAGAIN);
}

/// Paths that begin with `start` and end with a process id.
std::vector<std::string> socketPaths(const std::string& start) {
  const std::size_t slash = start.rfind('/');
  const std::string folder = start.substr(0, slash + 1);
  const std::string nameStart = start.substr(slash + 1);
  std::vector<std::string> paths;
  const auto closeFolder = [](DIR* opened) { closedir(opened); };
  const std::unique_ptr<DIR, decltype(closeFolder)> list(opendir(folder.c_str()), closeFolder);
  while (const dirent* entry = list ? readdir(list.get()) : nullptr) {
    const std::string name = entry->d_name;
    if (name.size() > nameStart.size() && name.compare(0, nameStart.size(), nameStart) == 0 &&
        name.find_first_not_of("0123456789", nameStart.size()) == std::string::npos) {
      paths.push_back(folder + name);
    }
  }
  return paths;
}

/// The number in a port file; 0 when there is none.
int readPort(int file) {
  std::array<char, 16> text{};
  const ssize_t count = pread(file, text.data(), text.size() - 1, 0);
  return count > 0 ? static_cast<int>(std::strtol(text.data(), nullptr, 10)) : 0;
}

}  // namespace

Rendezvous::Rendezvous(std::string pathPrefix) : prefix(std::move(pathPrefix)) {}

Rendezvous::~Rendezvous() {
  close();
}

std::string Rendezvous::socketPath() const {
  return prefix + std::to_string(number) + "." + std::to_string(getpid());
}

std::string Rendezvous::open() {
  const int first = getpid() % kPortCount;
  std::string failure;
  for (int i = 0; i < kAttempts; ++i) {
    number = kFirstPort + (first + i) % kPortCount;
    failure = listen();
    if (failure.empty() || errno != EADDRINUSE) {
      break;
    }
  }
  if (failure.empty()) {
    failure = publish();
  }
  if (!failure.empty()) {
    close();
  }
  return failure;
}

std::string Rendezvous::listen() {
  sockaddr_un address{};
  UniqueDescriptor fresh = streamSocket();
  if (!fresh.isOpen() || !fillAddress(socketPath(), address) ||
      !bindOwnerOnly(fresh.get(), address)) {
    return errorText("cannot listen at " + socketPath());
  }
  identify(socketPath(), socketIdentity);
  if (::listen(fresh.get(), kBacklog) != 0) {
    return errorText("cannot listen at " + socketPath());
  }
  socket = std::move(fresh);
  return {};
}

std::string Rendezvous::publish() {
  const std::string draft = portPath() + "." + std::to_string(getpid());
  unlink(draft.c_str());
  UniqueDescriptor file(
      ::open(draft.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kOwnersAlone));
  if (!file.isOpen()) {
    return errorText("cannot make " + draft);
  }
  const std::string contents = std::to_string(number) + "\n";
  std::string failure;
  if (flock(file.get(), LOCK_EX | LOCK_NB) != 0 ||
      write(file.get(), contents.data(), contents.size()) !=
          static_cast<ssize_t>(contents.size())) {
    failure = errorText("cannot write " + draft);
  }
  for (int i = 0; failure.empty() && i < kAttempts; ++i) {
    if (link(draft.c_str(), portPath().c_str()) == 0) {
      portFile = std::move(file);
      identify(draft, portIdentity);
      break;
    }
    failure = errno == EEXIST ? clearStale() : errorText("cannot make " + portPath());
  }
  unlink(draft.c_str());
  return failure.empty() && !portFile.isOpen() ? "cannot make " + portPath() : failure;
}

// Empty also when the file went away meanwhile: the caller tries again in any case.
std::string Rendezvous::clearStale() {
  const std::string path = portPath();
  const UniqueDescriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!file.isOpen()) {
    return errno == ENOENT ? std::string{} : errorText("cannot take over " + path);
  }
  struct stat status {};
  if (fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) || status.st_uid != geteuid()) {
    return "cannot take over " + path + ": no plain file of this user";
  }
  const int stalePort = readPort(file.get());
  std::string alive =
      "another Postmaster is running, port " + std::to_string(stalePort) + " in " + path;
  if (flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
    return alive;
  }
  for (const std::string& socketName : socketPaths(prefix + std::to_string(stalePort) + ".")) {
    if (socketName != socketPath() && isListening(socketName)) {
      return alive;
    }
  }
  removeIf(path, {status.st_dev, status.st_ino});
  removeSocketsOf(stalePort);
  return {};
}

void Rendezvous::removeSocketsOf(int stalePort) const {
  for (const std::string& path : socketPaths(prefix + std::to_string(stalePort) + ".")) {
    struct stat status {};
    const bool ours = lstat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode) &&
                      status.st_uid == geteuid() && path != socketPath();
    if (ours) {
      unlink(path.c_str());
    }
  }
}

bool Rendezvous::isNameLost() const {
  return socket.isOpen() && access(socketPath().c_str(), F_OK) != 0 && errno == ENOENT;
}

std::string Rendezvous::renew() {
  return listen();
}

void Rendezvous::close() {
  if (socketIdentity != FileIdentity{}) {
    removeIf(socketPath(), std::exchange(socketIdentity, {}));
  }
  if (portFile.isOpen()) {
    removeIf(portPath(), std::exchange(portIdentity, {}));
  }
  socket.close();
  portFile.close();
}

bool Rendezvous::identify(const std::string& path, FileIdentity& identity) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) {
    return false;
  }
  identity = {status.st_dev, status.st_ino};
  return true;
}

void Rendezvous::removeIf(const std::string& path, const FileIdentity& identity) {
  FileIdentity present{};
  if (identify(path, present) && present == identity) {
    unlink(path.c_str());
  }
}

}  // namespace postmaster
