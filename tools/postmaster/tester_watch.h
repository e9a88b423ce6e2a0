#pragma once

#include "postmaster/witness.h"

#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

namespace postmaster {

/// Notices that a tester lets the user wait: a command has come to it and nothing from it for a
/// while. A tester that has said that it works may take its time.
class TesterWatch : public Witness {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  using Clock = std::function<TimePoint()>;

  explicit TesterWatch(std::chrono::seconds patienceTime,
                       Clock timeSource = std::chrono::steady_clock::now)
      : patienceOfUser(patienceTime), clock(std::move(timeSource)) {}

  void saw(const Message& message, std::string_view refusal) override;

  /// When the patience ends, if nothing comes from the tester; nothing while it owes no answer.
  std::optional<TimePoint> deadline() const;
  /// The deadline has passed and was told of: the next begins with the next command.
  void reset() { waitingSince.reset(); }

  std::chrono::seconds patience() const { return patienceOfUser; }
  TimePoint now() const { return clock(); }

  /// Whether the tester has asked the window to end.
  bool hasEndedSession() const { return endsSession; }

 private:
  std::chrono::seconds patienceOfUser;
  Clock clock;
  std::optional<TimePoint> waitingSince;
  bool isBusy = false;
  bool endsSession = false;
};

/// Copies the button file of each system that a tester opens to "nelkv.btn~" beside it, once a
/// folder: the set as it was before this session.
class ButtonKeeper : public Witness {
 public:
  explicit ButtonKeeper(Complaints& complaintsOut) : complaints(complaintsOut) {}

  void saw(const Message& message, std::string_view refusal) override;

 private:
  Complaints& complaints;
  std::set<std::string> folders;
};

}  // namespace postmaster
