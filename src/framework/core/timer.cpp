// Timers on Xt time-outs. A handler may delete its own timer, so a firing touches nothing of the
// timer once the handler runs.

#include "framework/core/timer.h"

#include "framework/core/application.h"

#include <X11/Intrinsic.h>

zTimer::zTimer(zEvH* timerOwner, zOwnerHandler timerHandler, unsigned long milliseconds,
               Repeat repetition)
    : owner(timerOwner), handler(timerHandler), repeat(repetition), period(milliseconds) {
  arm();
}

zTimer::~zTimer() {
  if (timerId != 0) {
    XtRemoveTimeOut(timerId);
  }
}

void zTimer::arm() {
  timerId = XtAppAddTimeOut(zApp::instance()->context(), period, &zTimer::fired, this);
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
