#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tests/support/basics.h"

/// One end of a connection, which frames go over. Never blocks.
class Connection {
 public:
  Connection() = default;
  explicit Connection(UniqueDescriptor opened) : socket(std::move(opened)) {}
  /// A client's, to the socket at `path`; closed when nobody listens there.
  explicit Connection(const std::string& path);

  int fd() const { return socket.get(); }
  bool isOpen() const { return socket.isOpen(); }
  void close() { socket.close(); }

  /// Sends what can be sent now and takes it off `bytes`. The error number, 0 when there is none.
  int send(std::string_view& bytes) const;
  /// Reads what is there.
  void read();
  /// The next whole frame that was read, without its NUL.
  std::optional<std::string> take();
  bool hasFrame() const { return received.find('\0') != std::string::npos; }
  /// Whether the other side closed its end, and all before that was read.
  bool hasEnded() const { return ended; }

 private:
  UniqueDescriptor socket;
  std::string received;
  bool ended = false;
};
