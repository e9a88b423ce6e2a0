#pragma once

#include <unistd.h>

#include <utility>

namespace postmaster {

/// Owner of one file descriptor, closed when the owner goes; -1 stands for none.
class UniqueFd {
 public:
  UniqueFd() = default;
  explicit UniqueFd(int descriptor) : fd(descriptor) {}
  UniqueFd(UniqueFd&& other) noexcept : fd(std::exchange(other.fd, -1)) {}
  UniqueFd& operator=(UniqueFd&& other) noexcept {
    if (this != &other) {
      reset();
      fd = std::exchange(other.fd, -1);
    }
    return *this;
  }
  UniqueFd(const UniqueFd&) = delete;
  UniqueFd& operator=(const UniqueFd&) = delete;
  ~UniqueFd() { reset(); }

  int get() const { return fd; }
  bool isOpen() const { return fd >= 0; }
  void reset() {
    if (fd >= 0) {
      ::close(std::exchange(fd, -1));
    }
  }

 private:
  int fd = -1;
};

}  // namespace postmaster
