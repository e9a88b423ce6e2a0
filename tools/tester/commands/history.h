#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include "tester/engine/engine.h"

namespace tester {

/// The transitions that were fired last, whatever the trace levels.
class History {
 public:
  /// Older ones are forgotten.
  static constexpr std::size_t kMostEntries = 2000;

  void add(Time time, PendingTransition transition, std::string outcome);
  void clear() { entries.clear(); }

  /// The last `count` of them, or all if there are fewer, oldest first, a line each.
  std::string text(std::size_t count) const;

 private:
  struct Entry {
    Time time = 0;
    PendingTransition transition;
    std::string outcome;
  };

  std::deque<Entry> entries;
};

}  // namespace tester
