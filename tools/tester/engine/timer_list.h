#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tester/engine/engine.h"

namespace tester {

/// The active timers of all instances, ordered by expiry; those that expire at one time keep the
/// order in which they were set. An instance has at most one active timer of a name.
class TimerList {
 public:
  void set(const InstanceId& owner, const std::string& name, Time expiry);

  /// Removes the timer; false when it was not active.
  bool reset(const InstanceId& owner, const std::string& name);

  void removeOwner(const InstanceId& owner);
  void clear() { timers.clear(); }

  bool isActive(const InstanceId& owner, const std::string& name) const;
  const std::vector<TimerInfo>& all() const { return timers; }

  /// Removes and returns the first timer that expires up to `limit`.
  std::optional<TimerInfo> takeExpired(Time limit);

 private:
  std::vector<TimerInfo> timers;
};

}  // namespace tester
