// One lock file, never removed: removing it would let two holders lock different files of the same
// name.

#include "tests/support/rendezvous_lock.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr mode_t kReadableByAll = 0644;

UniqueDescriptor openLockFile() {
  // Another user's file cannot be opened for writing; a lock needs no more than reading.
  UniqueDescriptor file(::open(kRendezvousLockFile.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file.isOpen()) {
    file = UniqueDescriptor(
        ::open(kRendezvousLockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kReadableByAll));
    if (file.isOpen()) {
      ::fchmod(file.get(), kReadableByAll);
    }
  }
  if (!file.isOpen()) {
    throw std::system_error(errno, std::generic_category(), "cannot open " + kRendezvousLockFile);
  }
  return file;
}

std::optional<int> toNumber(const std::string& text) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

/// The descriptor of the lock file that this process was started with, if any.
std::optional<int> inheritedDescriptor(int lockFile) {
  struct stat wanted = {};
  ::fstat(lockFile, &wanted);
  for (const fs::directory_entry& entry : fs::directory_iterator("/proc/self/fd")) {
    const std::optional<int> fd = toNumber(entry.path().filename().string());
    struct stat found = {};
    if (fd && *fd != lockFile && ::fstat(*fd, &found) == 0 && found.st_dev == wanted.st_dev &&
        found.st_ino == wanted.st_ino) {
      return fd;
    }
  }
  return std::nullopt;
}

/// Sockets carry the id of the Postmaster that made them; those of dead ones are litter.
void removeStaleSockets() {
  const fs::path prefix(kRendezvousPrefix);
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(prefix.parent_path(), ignored)) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with(prefix.filename().string())) {
      continue;
    }
    const std::optional<int> owner = toNumber(name.substr(name.rfind('.') + 1));
    if (owner && *owner > 0 && ::kill(*owner, 0) != 0 && errno == ESRCH) {
      fs::remove(entry.path(), ignored);
    }
  }
}

}  // namespace

RendezvousLock::RendezvousLock() : lock(openLockFile()) {
  if (const std::optional<int> inherited = inheritedDescriptor(lock.get())) {
    lock = UniqueDescriptor(::fcntl(*inherited, F_DUPFD_CLOEXEC, 0));
    ::fcntl(*inherited, F_SETFD, FD_CLOEXEC);  // no program under test may keep the lock
  }
  while (::flock(lock.get(), LOCK_EX) != 0) {
    if (errno != EINTR) {
      throw std::system_error(errno, std::generic_category(), "cannot lock the rendezvous");
    }
  }
  removeStaleSockets();
}
