#pragma once

#include <unistd.h>

#include <cstdio>
#include <memory>
#include <utility>

/// Owner of a file descriptor, closed when the owner goes; -1 stands for none.
class UniqueDescriptor {
 public:
  UniqueDescriptor() = default;
  explicit UniqueDescriptor(int opened) : fd(opened) {}
  UniqueDescriptor(UniqueDescriptor&& other) noexcept : fd(other.release()) {}
  UniqueDescriptor& operator=(UniqueDescriptor&& other) noexcept {
    if (this != &other) {
      close();
      fd = other.release();
    }
    return *this;
  }
  ~UniqueDescriptor() { close(); }

  int get() const { return fd; }
  bool isOpen() const { return fd >= 0; }
  int release() { return std::exchange(fd, -1); }
  /// False if the system tells now that what was written is lost.
  bool close() { return fd < 0 || ::close(release()) == 0; }

 private:
  int fd = -1;
};

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
/// Owner of an open file of the C library.
using UniqueFile = std::unique_ptr<std::FILE, FileCloser>;
