#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

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

  struct Entry {
    Time time = 0;
    PendingTransition transition;
    std::string outcome;
  };
  /// Oldest first.
  const std::deque<Entry>& all() const { return entries; }

  /// The transitions of one instance, oldest first, a line each.
  std::string textOf(const InstanceId& id) const;

  /// A line without an end for each, newest first.
  std::vector<std::string> newestFirst() const;

 private:
  std::deque<Entry> entries;
};

}  // namespace tester
