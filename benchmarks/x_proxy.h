#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <string>
#include <thread>

/// A display of its own in front of another one on this machine: everything goes through it, each
/// way delayed by a constant time, as over a network. It counts the replies of the server, that is
/// how often a program has asked and waited.
///
/// It works in a thread of its own from construction to destruction, for any number of programs.
class XProxy {
 public:
  /// `target` is a display of this machine such as ":3". Throws std::runtime_error when it cannot
  /// listen.
  explicit XProxy(const std::string& target);
  XProxy(const XProxy&) = delete;
  XProxy& operator=(const XProxy&) = delete;
  ~XProxy();

  /// The name of the display that programs are to use.
  std::string display() const { return ":" + std::to_string(number); }

  /// The delay of everything that arrives from now on, one way.
  void setDelay(std::chrono::milliseconds oneWay) { delay = oneWay; }
  /// Replies to all programs so far.
  std::uint64_t replies() const { return replyCount; }

 private:
  void listen();
  void work();

  std::string targetPath;
  int number = 0;
  int listener = -1;
  int wakeUp = -1;  ///< an eventfd that ends the thread
  std::atomic<std::chrono::milliseconds> delay{std::chrono::milliseconds(0)};
  std::atomic<std::uint64_t> replyCount{0};
  std::thread worker;
};
