#pragma once

#include <array>

#include "framework/core/evh.h"

/// Handler of timers and of the idle list; it is given the owner. The result matters to the idle
/// list only: non-zero takes the handler off it.
using zOwnerHandler = int (*)(zEvH* owner);

/// When a timer that looks after something is to fire next.
enum class zTimerPace {
  kPeriod,  ///< when its period has passed
  kAtOnce,  ///< after the pending X events
  kAsleep,  ///< not before one of its descriptors can be read
};

/// Spares a repeating timer the firings at which its handler would find nothing to do.
struct zTimerWatch {
  /// Asked each time the timer is due; kAsleep leaves the handler out.
  zTimerPace (*pace)();
  /// What wakes the sleeping timer; negative descriptors are none.
  std::array<int, 2> (*descriptors)();
};

/// A running timer; delete it to stop it. A slow handler does not stop the next period from being
/// counted, and nested event loops go on firing it. The handler may delete its own timer.
class zTimer {
 public:
  enum Repeat : int { kOnce = 0, kRepeating = 1 };

  /// Fires `handler` with `owner` every `period` milliseconds, or once. With a repeated period of
  /// half a second or more the first firing may be late by a tenth of a second.
  zTimer(zEvH* owner, zOwnerHandler handler, unsigned long period, Repeat repeat = kRepeating);
  /// Fires as `watch` says, for the first time as soon as that is asked for. `period` is not 0.
  zTimer(zEvH* owner, zOwnerHandler handler, unsigned long period, const zTimerWatch& watch);
  zTimer(const zTimer&) = delete;
  zTimer& operator=(const zTimer&) = delete;
  ~zTimer();

  /// Whether it will fire (again).
  bool isPending() const { return timerId != 0 || inputId != 0; }

 private:
  void fired();
  void expired();
  void woken();
  void openDescriptor();
  void arm();
  void setClock(unsigned long delay);
  void fireAtPace();
  void sleep();
  void endSleep();

  zEvH* owner;
  zOwnerHandler handler;
  Repeat repeat;
  unsigned long period;
  zTimerWatch watch{};
  unsigned long timerId = 0;
  int descriptor = -1;                     ///< of a repeating timer
  unsigned long inputId = 0;               ///< its input source; 0 when it runs on time-outs
  std::array<unsigned long, 2> wakeIds{};  ///< input sources of the sleep
};
