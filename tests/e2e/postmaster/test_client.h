#pragma once

#include "postmaster/message.h"
#include "support/descriptor.h"
#include "tests/support/message.h"

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

/// How long a test waits for anything before it has failed.
inline constexpr std::chrono::seconds kPatience{10};

/// Waits, in small steps, until `condition` holds; false when it never did.
template <typename Condition>
bool waitUntil(Condition condition, std::chrono::milliseconds limit = kPatience);

/// One connection to a Postmaster, driven by hand.
class TestClient {
 public:
  /// Connects to the socket at `path`; `isOpen` tells whether it worked.
  explicit TestClient(const std::string& path);

  bool isOpen() const { return connected; }
  int fd() const { return socket.get(); }

  void sendBytes(std::string_view bytes);
  void directed(int sender, int dest, int tag, std::string_view payload = {});
  void broadcast(int sender, int tag);

  /// Sends 7000 as `toolType` and takes the answer's tag; 0 when none came.
  int connectAs(int toolType);

  /// The next message; nothing when none comes in time or the connection ends.
  std::optional<postmaster::Envelope> receive();

  /// The next message's tag, 0 for none.
  int receiveTag();

  /// Whether the Postmaster closes the connection, whatever comes before.
  bool seesEnd();

  void hangUp() { socket.close(); }

 private:
  bool readSome();

  UniqueDescriptor socket;
  postmaster::FrameSplitter splitter;
  bool connected = false;
};

template <typename Condition>
bool waitUntil(Condition condition, std::chrono::milliseconds limit) {
  const auto end = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) {
      return false;
    }
    usleep(2000);
  }
  return true;
}
