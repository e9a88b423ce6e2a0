#include "tester/engine/timer_list.h"

#include <algorithm>

namespace tester {

namespace {

bool isTimer(const TimerInfo& timer, const InstanceId& owner, const std::string& name) {
  return timer.owner == owner && timer.name == name;
}

}  // namespace

void TimerList::set(const InstanceId& owner, const std::string& name, Time expiry) {
  reset(owner, name);
  const auto later = std::find_if(timers.begin(), timers.end(),
                                  [&](const TimerInfo& timer) { return timer.expiry > expiry; });
  timers.insert(later, TimerInfo{owner, name, expiry});
}

bool TimerList::reset(const InstanceId& owner, const std::string& name) {
  return std::erase_if(timers,
                       [&](const TimerInfo& timer) { return isTimer(timer, owner, name); }) != 0;
}

void TimerList::removeOwner(const InstanceId& owner) {
  std::erase_if(timers, [&](const TimerInfo& timer) { return timer.owner == owner; });
}

bool TimerList::isActive(const InstanceId& owner, const std::string& name) const {
  return std::any_of(timers.begin(), timers.end(),
                     [&](const TimerInfo& timer) { return isTimer(timer, owner, name); });
}

std::optional<TimerInfo> TimerList::takeExpired(Time limit) {
  if (timers.empty() || timers.front().expiry > limit) {
    return std::nullopt;
  }
  TimerInfo first = timers.front();
  timers.erase(timers.begin());
  return first;
}

}  // namespace tester
