#pragma once

#include <functional>

#include "framework/draw/xtfwd.h"

/// Events of this process's own making, told from all others. One may live at a time.
class EventStream {
 public:
  /// `handled` is called for each event when the loop comes to it.
  explicit EventStream(std::function<void()> handled);
  EventStream(const EventStream&) = delete;
  EventStream& operator=(const EventStream&) = delete;
  ~EventStream();

  /// Puts one event into the queue; it is there when this returns.
  void post();

 private:
  std::function<void()> action;
  Window window = 0;
};
