#pragma once

#include <string>
#include <string_view>

#include "support/descriptor.h"

namespace gdb {

/// One end of a connection to another process. Neither reading nor writing blocks: what cannot be
/// written yet waits in memory.
class Channel {
 public:
  /// `end` must not block.
  explicit Channel(UniqueDescriptor end) : connection(std::move(end)) {}

  int descriptor() const { return connection.get(); }

  /// What is there to be read, not much more than `most` bytes.
  std::string read(std::size_t most);
  /// The other side has gone: nothing more can be read or written.
  bool hasEnded() const { return ended; }

  void write(std::string_view bytes);
  /// Writes of what waits as much as can be.
  void flush();
  bool hasToWrite() const { return !waiting.empty() && !ended; }

 private:
  UniqueDescriptor connection;
  std::string waiting;
  bool ended = false;
};

}  // namespace gdb
