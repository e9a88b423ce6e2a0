#pragma once

#include "framework/core/evh.h"

/// Handler of timers and of the idle list; it is given the owner. The result matters to the idle
/// list only: non-zero takes the handler off it.
using zOwnerHandler = int (*)(zEvH* owner);

/// A running timer; delete it to stop it. A slow handler does not stop the next period from being
/// counted, and nested event loops go on firing it. The handler may delete its own timer.
class zTimer {
 public:
  enum Repeat : int { kOnce = 0, kRepeating = 1 };

  /// Fires `handler` with `owner` every `period` milliseconds, or once.
  zTimer(zEvH* owner, zOwnerHandler handler, unsigned long period, Repeat repeat = kRepeating);
  zTimer(const zTimer&) = delete;
  zTimer& operator=(const zTimer&) = delete;
  ~zTimer();

  /// Whether it will fire (again).
  bool isPending() const { return timerId != 0 || inputId != 0; }

 private:
  static void fired(void* timer, unsigned long* id);
  static void expired(void* timer, int* source, unsigned long* id);
  void openDescriptor();
  void arm();

  zEvH* owner;
  zOwnerHandler handler;
  Repeat repeat;
  unsigned long period;
  unsigned long timerId = 0;
  int descriptor = -1;        ///< of a repeating timer
  unsigned long inputId = 0;  ///< its input source; 0 when it runs on time-outs
};
