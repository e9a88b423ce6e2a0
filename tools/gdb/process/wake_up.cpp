#include "gdb/process/wake_up.h"

#include <sys/epoll.h>
#include <sys/timerfd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>

namespace gdb {

namespace {

void check(int result) {
  if (result < 0) {
    throw std::system_error(errno, std::generic_category(), "events");
  }
}

}  // namespace

WakeUp::WakeUp()
    : events(epoll_create1(EPOLL_CLOEXEC)),
      timer(timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC)) {
  check(events.get());
  check(timer.get());
  watch(timer.get(), kInput);
}

void WakeUp::watch(int descriptor, unsigned interest) {
  if (interest == kNothing) {
    forget(descriptor);
    return;
  }
  const auto old = watched.find(descriptor);
  if (old != watched.end() && old->second == interest) {
    return;
  }
  epoll_event event{};
  event.events =
      ((interest & kInput) != 0 ? EPOLLIN : 0U) | ((interest & kRoom) != 0 ? EPOLLOUT : 0U);
  event.data.fd = descriptor;
  check(epoll_ctl(events.get(), old == watched.end() ? EPOLL_CTL_ADD : EPOLL_CTL_MOD, descriptor,
                  &event));
  watched[descriptor] = interest;
}

void WakeUp::forget(int descriptor) noexcept {
  if (watched.erase(descriptor) != 0) {
    epoll_ctl(events.get(), EPOLL_CTL_DEL, descriptor, nullptr);
  }
}

void WakeUp::setDeadline(std::optional<Clock::time_point> moment) {
  if (deadline == moment) {
    return;
  }
  deadline = moment;
  itimerspec setting{};
  if (moment) {
    using std::chrono::nanoseconds;
    // A time of 0 would switch the timer off.
    const auto since = std::max(nanoseconds(1), nanoseconds(moment->time_since_epoch()));
    setting.it_value.tv_sec = since.count() / std::nano::den;
    setting.it_value.tv_nsec = since.count() % std::nano::den;
  }
  check(timerfd_settime(timer.get(), TFD_TIMER_ABSTIME, &setting, nullptr));
}

}  // namespace gdb
