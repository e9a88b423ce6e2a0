#pragma once

#include <memory>
#include <string>

#include "gdb/session/query_queue.h"
#include "support/descriptor.h"

namespace gdb {

/// Keeps GDB's breakpoints for a GDB that comes after it, in files without a name, so that nothing
/// of them is left however this process ends.
class BreakpointFile {
 public:
  BreakpointFile() = default;
  BreakpointFile(const BreakpointFile&) = delete;
  BreakpointFile& operator=(const BreakpointFile&) = delete;

  /// Has GDB write its breakpoints of now.
  void save(QueryQueue& queries);
  /// Whether there are any.
  bool isThere() const;
  /// As another process of the same user finds the file.
  std::string path() const;

 private:
  std::shared_ptr<UniqueDescriptor> kept;
};

}  // namespace gdb
