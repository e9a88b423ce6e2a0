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

#include <chrono>
#include <cstdint>
#include <ratio>
#include <utility>

#include <sys/timerfd.h>
#include <unistd.h>

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

void zTimer::lookAgain() {
  if (wakeIds != decltype(wakeIds){}) {
    endSleep();
    setClock(0);
  }
}

void zTimer::woken() {
  lookAgain();
  fireAtPace();
}

// Idle handlers on one Xt work procedure. Xt takes a work procedure off its queue while it runs, so
// a nested event loop started by a handler makes no idle passes, and the list is never run twice at
// a time. There is one work procedure at most: what was added after the last item had gone keeps
// the one that would otherwise drop itself at the end of its pass.

namespace {

// Counts the passes of all lists of the process.
int passes = 0;

}  // namespace

zIdleList::~zIdleList() {
  if (workProcId != 0) {
    XtRemoveWorkProc(workProcId);
  }
  while (zIdleItem* item = items.popFront()) {
    delete item;
  }
}

void zIdleList::add(zEvH* owner, zOwnerHandler handler) {
  if (isEmpty()) {
    install();
  }
  items.append(std::make_unique<zIdleItem>(zIdleItem{owner, handler, ++additions}).release());
}

void zIdleList::install() {
  removeProc = false;
  if (workProcId == 0) {
    workProcId = connectWork<&zIdleList::runPass>(zApp::instance()->context(), this);
  }
}

void zIdleList::remove(zEvH* owner, zOwnerHandler handler) {
  for (zTypedDlist<zIdleItem>::Iter walk(items); zIdleItem* item = walk.next();) {
    if (item->owner == owner && item->handler == handler) {
      forget(item);
      return;
    }
  }
}

bool zIdleList::forget(zIdleItem* item) {
  if (!items.remove(item)) {
    return false;
  }
  forgotten.emplace_back(item);
  if (!isRunningHandlers) {
    forgotten.clear();
  }
  removeProc = isEmpty();
  return true;
}

bool zIdleList::runPass() {
  if (!isEmpty() && passes >= kPassesPerRun) {
    passes = 0;
    runHandlers();
  }
  ++passes;
  if (removeProc) {
    workProcId = 0;
  }
  return removeProc;
}

void zIdleList::runHandlers() {
  if (!enabled) {
    return;
  }
  const std::uint64_t newest = additions;
  isRunningHandlers = true;
  for (zTypedDlist<zIdleItem>::Iter walk(items); zIdleItem* item = walk.next();) {
    // A handler that takes itself off and on again must not keep this run from ending.
    if (item->serial <= newest && item->handler(item->owner) != 0) {
      forget(item);
    }
  }
  isRunningHandlers = false;
  forgotten.clear();
}
