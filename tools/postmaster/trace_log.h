#pragma once

#include "postmaster/envelope.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace postmaster {

/// Where the trace goes: a file, standard output, or nowhere. Each line is written out at once, so
/// that a reader can follow it.
class TraceLog {
 public:
  /// Opens `fileName` anew, "-" being standard output. Returns the reason of a failure, otherwise
  /// an empty text. A log that was never opened writes nothing.
  std::string open(const std::string& fileName);

  /// Writes one line for `message` at the present time. `refusal`, when not empty, says why the
  /// message went no further.
  void write(const Envelope& message, std::string_view refusal = {});

  /// Whether a write failed; the log has then stopped.
  bool hasFailed() const { return failed; }

 private:
  struct Close {
    void operator()(std::FILE* file) const;
  };
  std::unique_ptr<std::FILE, Close> file;
  bool failed = false;
};

}  // namespace postmaster
