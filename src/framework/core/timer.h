#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "framework/core/evh.h"
#include "support/lists.h"

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

  /// Asks the watch again as soon as possible, if the timer sleeps: there may be work now that none
  /// of its descriptors tells.
  void lookAgain();
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

/// One idle handler and its owner.
struct zIdleItem {
  zEvH* owner;
  zOwnerHandler handler;
  std::uint64_t serial;  ///< counts the additions, so that a run knows what is newer than itself
};

/// Handlers that run when the event loop has nothing else to do: all of them once in every 101 idle
/// passes, which gives events the priority. Rides on an Xt work procedure that is there only while
/// the list has items. Handlers may add and remove any items, themselves included.
class zIdleList {
 public:
  zIdleList() = default;
  zIdleList(const zIdleList&) = delete;
  zIdleList& operator=(const zIdleList&) = delete;
  ~zIdleList();

  /// Puts the handler last. While the list runs, it waits for the next run.
  void add(zEvH* owner, zOwnerHandler handler);
  /// Removes the first item of this owner and handler; nothing happens when there is none.
  void remove(zEvH* owner, zOwnerHandler handler);
  /// While disabled, passes are counted but no handler runs.
  void setEnabled(bool on) { enabled = on; }
  bool isEmpty() const { return items.isEmpty(); }
  /// The application context is a new one and has lost the work procedure.
  void contextReplaced();

 private:
  static constexpr int kPassesPerRun = 101;

  /// True when the work procedure is to go.
  bool runPass();
  void runHandlers();
  void install();
  /// False when the item has been taken off already.
  bool forget(zIdleItem* item);

  zTypedDlist<zIdleItem> items;
  std::vector<std::unique_ptr<zIdleItem>> forgotten;  ///< kept until the run that may use them ends
  std::uint64_t additions = 0;
  bool isRunningHandlers = false;
  bool enabled = true;
  bool removeProc = false;  ///< tells Xt to drop the work procedure at the end of this pass
  unsigned long workProcId = 0;
};
