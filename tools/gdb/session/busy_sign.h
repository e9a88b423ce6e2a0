#pragma once

#include <chrono>
#include <optional>
#include <utility>

namespace gdb {

/// Whether the user sees that GDB or its target is busy: only when it takes longer than a moment.
class BusySign {
 public:
  using Clock = std::chrono::steady_clock;

  /// Takes how things are now; true when the sign has to be changed to isShown().
  bool update(bool isBusy, Clock::time_point now) {
    if (!isBusy) {
      since.reset();
      return std::exchange(shown, false);
    }
    since = since.value_or(now);
    return now >= *since + kMoment && !std::exchange(shown, true);
  }
  bool isShown() const { return shown; }
  /// There is a new user, who sees none.
  void hide() { shown = false; }
  /// When the sign is due.
  std::optional<Clock::time_point> deadline() const {
    return since && !shown ? std::optional(*since + kMoment) : std::nullopt;
  }

 private:
  static constexpr std::chrono::milliseconds kMoment{200};

  std::optional<Clock::time_point> since;
  bool shown = false;
};

}  // namespace gdb
