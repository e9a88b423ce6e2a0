#pragma once

#include <algorithm>
#include <chrono>

using Milliseconds = std::chrono::milliseconds;

/// How long a test waits for something that should happen at once. Generous, since a loaded machine
/// or a sanitizer slows programs down; only a failing test waits it out.
inline constexpr Milliseconds kAnswerTime{10000};

/// A moment to wait for at most.
class Deadline {
 public:
  explicit Deadline(Milliseconds fromNow) : end(Clock::now() + fromNow) {}

  bool hasPassed() const { return Clock::now() >= end; }

  /// What is left, at most `limit`, never negative: a timeout for poll.
  Milliseconds left(Milliseconds limit) const {
    const auto rest = std::chrono::ceil<Milliseconds>(end - Clock::now());
    return std::clamp(rest, Milliseconds{0}, limit);
  }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point end;
};
