// Files are replaced, not written over: the new content goes to a file beside the old one, which
// takes the old one's name when all of it is on the disk.

#include "button_file/file_access.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kGuard = O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
constexpr mode_t kModeOfNewFiles = 0666;
constexpr mode_t kPermissions = 07777;

bool isRegular(int fd, struct stat& about) {
  return fstat(fd, &about) == 0 && S_ISREG(about.st_mode);
}

bool isForbidden(int error) {
  return error == EACCES || error == EPERM || error == EROFS;
}

mode_t modeOfNewFile() {
  const mode_t mask = umask(0);
  umask(mask);
  return kModeOfNewFiles & ~mask;
}

// Where the chain of links at the end of a path leads, whether there is a file or not.
std::string linkTarget(std::filesystem::path path) {
  constexpr int kLongestChain = 40;
  std::error_code failure;
  for (int i = 0; i < kLongestChain && std::filesystem::is_symlink(path, failure); ++i) {
    path = path.parent_path() / std::filesystem::read_symlink(path, failure);
  }
  return path.string();
}

bool writeAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno != EINTR) {
      return false;
    }
    bytes.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
  }
  return true;
}

// Some file systems cannot wait for their disk; what they took counts as written.
bool synchronise(int fd) {
  return fsync(fd) == 0 || errno == EINVAL || errno == ENOSYS;
}

bool keepOwner(int fd, const struct stat& old) {
  struct stat now = {};
  return fstat(fd, &now) == 0 && ((now.st_uid == old.st_uid && now.st_gid == old.st_gid) ||
                                  fchown(fd, old.st_uid, old.st_gid) == 0);
}

enum class Outcome { done, failed, notPossible };

/// `old` is null where there is no file yet.
Outcome writeBeside(const std::string& target, const struct stat* old, std::string_view bytes) {
  if (old != nullptr && old->st_nlink > 1) {
    return Outcome::notPossible;
  }
  const std::string folder = target.substr(0, target.rfind('/') + 1);
  std::string name = folder + ".btn-XXXXXX";
  UniqueDescriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (!file.isOpen()) {
    return isForbidden(errno) ? Outcome::notPossible : Outcome::failed;
  }
  Outcome outcome = Outcome::failed;
  const mode_t mode = old != nullptr ? old->st_mode & kPermissions : modeOfNewFile();
  if (old != nullptr && !keepOwner(file.get(), *old)) {
    outcome = Outcome::notPossible;
  } else if (fchmod(file.get(), mode) == 0 && writeAll(file.get(), bytes) &&
             synchronise(file.get()) && file.close()) {
    if (rename(name.c_str(), target.c_str()) == 0) {
      const UniqueDescriptor directory(
          open(folder.empty() ? "." : folder.c_str(), O_RDONLY | kGuard));
      synchronise(directory.get());
      return Outcome::done;
    }
    outcome = isForbidden(errno) ? Outcome::notPossible : Outcome::failed;
  }
  unlink(name.c_str());
  return outcome;
}

bool writeInPlace(const std::string& target, std::string_view bytes) {
  UniqueDescriptor file(open(target.c_str(), O_WRONLY | O_CREAT | kGuard, kModeOfNewFiles));
  struct stat about = {};
  // Cut to its length at last: on a full disk the old bytes are room for the new ones.
  return file.isOpen() && isRegular(file.get(), about) && writeAll(file.get(), bytes) &&
         ftruncate(file.get(), static_cast<off_t>(bytes.size())) == 0 && synchronise(file.get()) &&
         file.close();
}

}  // namespace

UniqueFile openRegularFile(const std::string& path) {
  UniqueDescriptor file(open(path.c_str(), O_RDONLY | kGuard));
  struct stat about = {};
  if (!file.isOpen() || !isRegular(file.get(), about)) {
    return nullptr;
  }
  UniqueFile opened(fdopen(file.get(), "r"));
  if (opened != nullptr) {
    file.release();
  }
  return opened;
}

bool replaceFile(const std::string& path, std::string_view bytes) {
  const std::string target = linkTarget(path);
  struct stat old = {};
  bool isThere = false;
  {
    // A file that must not be written is not replaced either.
    const UniqueDescriptor present(open(target.c_str(), O_WRONLY | kGuard));
    isThere = present.isOpen();
    if (isThere ? !isRegular(present.get(), old) : errno != ENOENT) {
      return false;
    }
  }
  const Outcome outcome = writeBeside(target, isThere ? &old : nullptr, bytes);
  return outcome == Outcome::notPossible ? writeInPlace(target, bytes) : outcome == Outcome::done;
}
