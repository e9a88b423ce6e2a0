#pragma once

#include <chrono>
#include <optional>

namespace gdb {

/// Waits for an answer that costs GDB no time, to find out that it hangs. What GDB may take its
/// time for is not watched.
class AnswerWatch {
 public:
  using Clock = std::chrono::steady_clock;
  using Time = std::chrono::seconds;

  /// An answer is due from now on. It is late after `time`, and again after twice, four times ...
  void expect(Clock::time_point now, Time time) {
    since = now;
    patience = time;
  }
  /// It has come, or will not come any more.
  void end() { since.reset(); }
  bool isExpecting() const { return since.has_value(); }

  /// Whether it is late; not once more before the next time.
  bool isLate(Clock::time_point now) {
    const bool late = since && now >= *since + patience;
    if (late) {
      expect(now, 2 * patience);
    }
    return late;
  }
  std::optional<Clock::time_point> deadline() const {
    return since ? std::optional(*since + patience) : std::nullopt;
  }

 private:
  std::optional<Clock::time_point> since;
  Time patience{};
};

}  // namespace gdb
