// Timers. A single firing is an Xt time-out. A repeating one is a timer descriptor among the inputs
// of the application context: Xt counts the wait for its next time-out in whole milliseconds and
// spins through the rest, which with a short period costs a tenth of a processor. Slow timers tick
// on a common beat, so that together they wake an idle program once.
//
// A timer with a watch leaves its descriptor expired while it is to fire at once: an input among
// the others, it takes turns with them, and X events go first (zApp::processEvent). Asleep, it has
// the inputs of the watch in its place.
//
// A handler may delete its own timer, so a firing touches nothing of the timer once it runs.

#include "framework/core/timer.h"

#include <sys/timerfd.h>
#include <unistd.h>
#include <chrono>
#include <cstdint>
#include <ratio>
#include <utility>

#include "framework/core/application.h"
#include "framework/core/connect_xm.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

constexpr milliseconds kSlowPeriod{500};
constexpr milliseconds kBeat{100};

// Never zero, which would stop a clock.
timespec toTimespec(nanoseconds time) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
  const auto rest = static_cast<long>((time - seconds).count());
  return {static_cast<time_t>(seconds.count()), time.count() == 0 ? 1 : rest};
}

XtAppContext context() {
  return zApp::instance()->context();
}

}  // namespace

zTimer::zTimer(zEvH* timerOwner, zOwnerHandler timerHandler, unsigned long milliseconds,
               Repeat repetition)
    : owner(timerOwner), handler(timerHandler), repeat(repetition), period(milliseconds) {
  if (repeat == kRepeating) {
    openDescriptor();
  }
  arm();
}

zTimer::zTimer(zEvH* timerOwner, zOwnerHandler timerHandler, unsigned long milliseconds,
               const zTimerWatch& timerWatch)
    : zTimer(timerOwner, timerHandler, milliseconds) {
  if (inputId != 0) {
    watch = timerWatch;
    setClock(0);
  }
}

zTimer::~zTimer() {
  endSleep();
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
    inputId = connectInput<&zTimer::expired>(context(), descriptor, this);
  }
}

void zTimer::arm() {
  if (inputId == 0) {
    timerId = connectTimeOut<&zTimer::fired>(context(), period, this);
    return;
  }
  const milliseconds every(period);
  nanoseconds first = std::chrono::steady_clock::now().time_since_epoch() + every;
  if (every >= kSlowPeriod) {
    first = std::chrono::ceil<std::chrono::duration<long, std::ratio<kBeat.count(), 1000>>>(first);
  }
  const itimerspec due = {toTimespec(every), toTimespec(first)};
  timerfd_settime(descriptor, TFD_TIMER_ABSTIME, &due, nullptr);
}

// One firing of a timer with a watch; what has expired before is forgotten.
void zTimer::setClock(unsigned long delay) {
  const itimerspec due = {{}, toTimespec(milliseconds(delay))};
  timerfd_settime(descriptor, 0, &due, nullptr);
}

void zTimer::fired() {
  timerId = 0;
  // The next period counts from here, however long the handler takes.
  if (repeat == kRepeating && inputId == 0) {
    arm();
  }
  handler(owner);
}

void zTimer::expired() {
  if (watch.pace != nullptr) {
    fireAtPace();
    return;
  }
  std::uint64_t expirations = 0;
  if (read(descriptor, &expirations, sizeof expirations) == sizeof expirations) {
    fired();
  }
}

// The next firing is settled before the handler runs, which may start a nested event loop: at once
// it is until a firing finds otherwise.
void zTimer::fireAtPace() {
  switch (watch.pace()) {
    case zTimerPace::kAsleep:
      sleep();
      return;
    case zTimerPace::kPeriod:
      setClock(period);
      break;
    case zTimerPace::kAtOnce:
      break;
  }
  handler(owner);
}

void zTimer::sleep() {
  endSleep();
  const itimerspec never = {};
  timerfd_settime(descriptor, 0, &never, nullptr);
  const std::array<int, 2> sources = watch.descriptors();
  for (std::size_t i = 0; i < sources.size(); ++i) {
    wakeIds[i] = sources[i] < 0 ? 0 : connectInput<&zTimer::woken>(context(), sources[i], this);
  }
}

void zTimer::endSleep() {
  for (unsigned long& id : wakeIds) {
    if (id != 0) {
      XtRemoveInput(std::exchange(id, 0));
    }
  }
}

void zTimer::woken() {
  endSleep();
  setClock(0);
  fireAtPace();
}
