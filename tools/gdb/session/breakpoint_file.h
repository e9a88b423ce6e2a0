#pragma once

#include <filesystem>

#include "gdb/session/query_queue.h"

namespace gdb {

/// Keeps GDB's breakpoints in a file of its own, for a GDB that comes after it. The file goes with
/// the object.
class BreakpointFile {
 public:
  BreakpointFile() = default;
  BreakpointFile(const BreakpointFile&) = delete;
  BreakpointFile& operator=(const BreakpointFile&) = delete;
  ~BreakpointFile();

  /// Has GDB write its breakpoints of now.
  void save(QueryQueue& queries);
  /// Whether there are any.
  bool isThere() const;
  std::filesystem::path path() const { return folder / "breakpoints"; }

 private:
  std::filesystem::path folder;
};

}  // namespace gdb
