#pragma once

#include <chrono>
#include <map>
#include <optional>

#include "support/descriptor.h"

namespace gdb {

/// One descriptor that can be read when any of many things has happened: input on a descriptor,
/// room to write on one, or a moment that has come.
class WakeUp {
 public:
  using Clock = std::chrono::steady_clock;

  /// Throws std::system_error.
  WakeUp();

  int descriptor() const { return events.get(); }

  enum Interest : unsigned { kNothing = 0, kInput = 1, kRoom = 2 };
  /// Watches a descriptor, which must be open, for that from now on, instead of what was before.
  /// With kNothing it is forgotten. Throws std::system_error.
  void watch(int descriptor, unsigned interest);
  /// It is not watched any more, as it must be before it is closed.
  void forget(int descriptor) noexcept;

  /// The moment; nothing when there is none. One that has passed wakes at once.
  void setDeadline(std::optional<Clock::time_point> moment);

 private:
  UniqueDescriptor events;
  UniqueDescriptor timer;
  std::map<int, unsigned> watched;
  std::optional<Clock::time_point> deadline;
};

}  // namespace gdb
