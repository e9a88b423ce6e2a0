// Timers. A single firing is an Xt time-out. A repeating one is a timer descriptor among the inputs
// of the application context: Xt counts the wait for its next time-out in whole milliseconds and
// spins through the rest, which with a short period costs a tenth of a processor.
//
// A handler may delete its own timer, so a firing touches nothing of the timer once it runs.

#include "framework/core/timer.h"

#include <sys/timerfd.h>
#include <unistd.h>
#include <cstdint>

#include "framework/core/application.h"

#include <X11/Intrinsic.h>

namespace {

constexpr unsigned long kMillisecondsPerSecond = 1000;
constexpr unsigned long kNanosecondsPerMillisecond = 1000000;

}  // namespace

zTimer::zTimer(zEvH* timerOwner, zOwnerHandler timerHandler, unsigned long milliseconds,
               Repeat repetition)
    : owner(timerOwner), handler(timerHandler), repeat(repetition), period(milliseconds) {
  if (repeat == kRepeating) {
    openDescriptor();
  }
  arm();
}

zTimer::~zTimer() {
  if (timerId != 0) {
    XtRemoveTimeOut(timerId);
  }
  if (inputId != 0) {
    XtRemoveInput(inputId);
    close(descriptor);
  }
}

// Without a descriptor the timer falls back to time-outs.
void zTimer::openDescriptor() {
  descriptor = timerfd_create(CLOCK_MONOTONIC, TFD_NONBLOCK | TFD_CLOEXEC);
  if (descriptor >= 0) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): Xt takes the condition as a pointer
    const auto condition = reinterpret_cast<XtPointer>(XtInputReadMask);
    inputId =
        XtAppAddInput(zApp::instance()->context(), descriptor, condition, &zTimer::expired, this);
  }
}

void zTimer::arm() {
  if (inputId == 0) {
    timerId = XtAppAddTimeOut(zApp::instance()->context(), period, &zTimer::fired, this);
    return;
  }
  itimerspec due = {};
  due.it_value.tv_sec = static_cast<time_t>(period / kMillisecondsPerSecond);
  due.it_value.tv_nsec =
      static_cast<long>(period % kMillisecondsPerSecond * kNanosecondsPerMillisecond);
  if (period == 0) {
    due.it_value.tv_nsec = 1;  // zero would stop it
  }
  timerfd_settime(descriptor, 0, &due, nullptr);
}

void zTimer::fired(void* timer, unsigned long* /*id*/) {
  auto* self = static_cast<zTimer*>(timer);
  self->timerId = 0;
  // The next period counts from here, however long the handler takes.
  if (self->repeat == kRepeating) {
    self->arm();
  }
  self->handler(self->owner);
}

void zTimer::expired(void* timer, int* source, unsigned long* /*id*/) {
  std::uint64_t expirations = 0;
  if (read(*source, &expirations, sizeof expirations) == sizeof expirations) {
    fired(timer, nullptr);
  }
}
