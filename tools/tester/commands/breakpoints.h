#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tester/engine/engine.h"

namespace tester {

/// A description of transitions before which a run stops. An empty name or the number 0 stands
/// for any.
struct Breakpoint {
  int number = 0;  ///< by which the user removes it
  std::string process;
  int instanceNumber = 0;
  std::string state;
  std::string input;

  bool matches(const PendingTransition& transition) const;

  /// "Button:2 in Idle at Press", any being "*".
  std::string text() const;
};

class Breakpoints {
 public:
  /// Adds a breakpoint, or finds one that says the same; its number.
  int add(Breakpoint breakpoint);
  bool remove(int number);
  void clear() { breakpoints.clear(); }

  const std::vector<Breakpoint>& all() const { return breakpoints; }
  /// The first that matches; null when none does.
  const Breakpoint* find(const PendingTransition& transition) const;

 private:
  std::vector<Breakpoint> breakpoints;
  int lastNumber = 0;
};

}  // namespace tester
