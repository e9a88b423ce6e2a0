#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "framework/core/timer.h"
#include "support/dbl_list.h"

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
