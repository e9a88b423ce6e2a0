#pragma once

#include "postmaster/message.h"

#include <chrono>
#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <string_view>

namespace postmaster {

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

/// One line, without its line feed, that tells all of a frame: sender, receiver ("*" for an
/// undirected one), name and number, and the parameters. Text stands in double quotes, with
/// everything that is no printable ASCII escaped; long text and long lists are cut, with their
/// full size behind. A payload that does not hold what the message promises is shown as far as
/// it goes. For example: NELKVUI -> NELKV MSG_UI_COMMAND(1002) "go"
std::string describeMessage(const Envelope& message);

/// Local time with milliseconds: "2024-03-01 12:34:56.789".
std::string formatTime(std::chrono::system_clock::time_point time);

/// `text` in double quotes, escaped and cut as in a trace line.
std::string quoteText(std::string_view text);

}  // namespace postmaster
