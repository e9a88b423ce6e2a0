// The port file is one for the whole machine: the program holds the lock that all tests that make
// it share, for as long as it runs. As "--play-tool" it is a tool that a Postmaster starts.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <string_view>

#include "tests/e2e/postmaster/played_tool.h"

namespace {

constexpr char kLockFile[] = "/tmp/.nel.tessil.lock";
constexpr int kLockMode = 0666;
constexpr int kMaxInherited = 64;

/// Whether a parent (flock) holds the lock for this program, through a descriptor it handed down.
bool holdsInheritedLock() {
  struct stat lock {};
  struct stat other {};
  bool held = false;
  for (int fd = STDERR_FILENO + 1; !held && fd < kMaxInherited; ++fd) {
    held = stat(kLockFile, &lock) == 0 && fstat(fd, &other) == 0 && lock.st_dev == other.st_dev &&
           lock.st_ino == other.st_ino && flock(fd, LOCK_EX | LOCK_NB) == 0;
  }
  return held;
}

bool takeLock() {
  return holdsInheritedLock() ||
         flock(open(kLockFile, O_RDWR | O_CREAT | O_CLOEXEC, kLockMode), LOCK_EX) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1 && std::string_view(argv[1]) == kPlayTool) {
    return playTool(argc, argv);
  }
  testing::InitGoogleMock(&argc, argv);
  if (!takeLock()) {
    std::perror(kLockFile);
    return 1;
  }
  return RUN_ALL_TESTS();
}
