#include "tests/ui/support/ticker.h"

#include <utility>

#include "tests/ui/support/test_application.h"

#include <X11/Intrinsic.h>

namespace ui {

Ticker::Ticker(Milliseconds interval, std::function<void()> function)
    : period(interval), tick(std::move(function)) {
  arm();
}

Ticker::~Ticker() {
  // The timers of a context that was replaced are gone.
  if (id != 0 && armedIn == context()) {
    XtRemoveTimeOut(id);
  }
}

void Ticker::arm() {
  armedIn = context();
  id = XtAppAddTimeOut(armedIn, static_cast<unsigned long>(period.count()), &Ticker::fired, this);
}

void Ticker::fired(void* ticker, unsigned long* /*id*/) {
  auto* const self = static_cast<Ticker*>(ticker);
  self->arm();
  self->tick();
}

}  // namespace ui
