#pragma once

#include "frames/description.h"
#include "postmaster/message.h"

#include <chrono>
#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <string_view>

namespace postmaster {

using frames::describeMessage;
using frames::formatTime;

/// Writes what went wrong, one line each, "nelmpm: " before it. The same line comes at most once a
/// second: repetitions are counted, and the count goes with the line's next appearance or, at the
/// end, on a line of its own.
class Complaints {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  using Clock = std::function<TimePoint()>;

  explicit Complaints(std::ostream& output, Clock clock = std::chrono::steady_clock::now);
  ~Complaints();
  Complaints(const Complaints&) = delete;
  Complaints& operator=(const Complaints&) = delete;

  void say(const std::string& line);

  /// Writes the repetitions that were not yet told and forgets all lines.
  void flush();

 private:
  struct Entry {
    TimePoint written;
    int repetitions = 0;
  };

  void write(const std::string& line, int repetitions);

  std::ostream& output;
  Clock clock;
  std::map<std::string, Entry> recent;
};

}  // namespace postmaster
