#pragma once

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <regex>
#include <string>

#include "support/descriptor.h"
#include "tests/support/message.h"

/// All that a process of its own said; "~" stands for its number.
inline testing::Matcher<const std::string&> says(const std::string& text) {
  const auto withoutNumber = [](const std::string& said) {
    return std::regex_replace(said, std::regex("(PROCESS.(PID=)?)[0-9]+"), "$1~");
  };
  return testing::ResultOf(withoutNumber, text);
}

/// A connection of which the test holds both ends.
struct SocketPair {
  SocketPair() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    own = UniqueDescriptor(ends[0]);
    far = UniqueDescriptor(ends[1]);
  }

  void arrive(const std::string& bytes) const {
    ASSERT_EQ(write(far.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  /// What went out since it was last asked.
  std::string sent() const {
    std::string bytes(100000, '!');
    const ssize_t count = recv(far.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    return bytes.substr(0, count < 0 ? 0 : static_cast<std::size_t>(count));
  }

  UniqueDescriptor own;
  UniqueDescriptor far;
};
