#pragma once

#include <cstddef>
#include <functional>
#include <utility>

/// Work that may take long. It tells what it has done, and every so much work asks whether it may
/// go on.
class LongWork {
 public:
  /// Work that nobody ends.
  LongWork() = default;
  /// Work that goes on while `asked` returns true; empty for to its end.
  explicit LongWork(std::function<bool()> asked) : mayGoOn(std::move(asked)) {}

  /// Tells of work done since the last call, in units of about a nanosecond: a character looked at
  /// is one. False when the work is to end, from then on always.
  bool goOn(std::size_t units) {
    unasked += units;
    if (unasked >= kUnitsBetween && !ended) {
      unasked = 0;
      ended = mayGoOn && !mayGoOn();
    }
    return !ended;
  }
  bool hasEnded() const { return ended; }

 private:
  static constexpr std::size_t kUnitsBetween = std::size_t{1} << 20;

  std::function<bool()> mayGoOn;
  std::size_t unasked = 0;
  bool ended = false;
};
