#pragma once

#include <chrono>
#include <optional>

#include "framework/draw/pictures.h"

/// Work that may keep the user waiting, for as long as this lives. Once it has lasted for
/// `patience` the main window shows a busy pointer, is repainted where it needs to be, and Escape
/// ends the work. All else waits: neither timers nor inputs nor other events are handled, so
/// nothing happens to the objects that the work is about.
class zBusyScope {
 public:
  static inline std::chrono::milliseconds patience{500};

  zBusyScope();
  zBusyScope(const zBusyScope&) = delete;
  zBusyScope& operator=(const zBusyScope&) = delete;
  ~zBusyScope();

  /// To be asked every few milliseconds of the work. False when the user has pressed Escape; that
  /// key press is taken, all others stay in the queue as they came.
  bool mayGoOn();

 private:
  using Clock = std::chrono::steady_clock;

  void showPointer();
  void repaint() const;
  static bool takeEscape();

  Clock::time_point nextLook;
  std::optional<zCursor> pointer;  ///< while it is shown
};
