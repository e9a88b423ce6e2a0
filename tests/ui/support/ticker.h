#pragma once

#include <functional>

#include "framework/draw/xtfwd.h"
#include "tests/support/deadline.h"

namespace ui {

/// Calls a function again and again from whatever event loop runs. The function may run an event
/// loop itself, in which the ticking goes on; it must not delete the ticker.
class Ticker {
 public:
  Ticker(Milliseconds period, std::function<void()> tick);
  Ticker(const Ticker&) = delete;
  Ticker& operator=(const Ticker&) = delete;
  ~Ticker();

 private:
  static void fired(void* ticker, unsigned long* id);
  void arm();

  Milliseconds period;
  std::function<void()> tick;
  XtAppContext armedIn = nullptr;
  XtIntervalId id = 0;
};

}  // namespace ui
