#pragma once

#include <functional>

#include "framework/core/evh.h"
#include "framework/core/timer.h"

/// An owner of timers and idle handlers that does what it is told.
class Owner : public zEvH {
 public:
  explicit Owner(std::function<int()> does) : action(std::move(does)) {}

  /// The handler to register with this owner.
  static int run(zEvH* owner) { return static_cast<Owner*>(owner)->act(); }

  int runs = 0;

 private:
  int act() {
    ++runs;
    return action();
  }

  std::function<int()> action;
};

/// Runs the real event loop until `condition` holds; false when that takes too long.
bool runLoopUntil(const std::function<bool()>& condition);
