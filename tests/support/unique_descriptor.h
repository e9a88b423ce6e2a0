#pragma once

#include <unistd.h>

#include <utility>

/// Owns a file descriptor.
class UniqueDescriptor {
 public:
  UniqueDescriptor() = default;
  explicit UniqueDescriptor(int opened) : fd(opened) {}
  UniqueDescriptor(UniqueDescriptor&& other) noexcept : fd(std::exchange(other.fd, -1)) {}
  UniqueDescriptor& operator=(UniqueDescriptor&& other) noexcept {
    std::swap(fd, other.fd);
    return *this;
  }
  ~UniqueDescriptor() { close(); }

  int get() const { return fd; }
  bool isOpen() const { return fd >= 0; }

  void close() {
    if (isOpen()) {
      ::close(std::exchange(fd, -1));
    }
  }

 private:
  int fd = -1;
};
