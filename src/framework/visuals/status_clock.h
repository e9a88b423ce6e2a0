#pragma once

#include <ctime>
#include <memory>

#include "framework/core/timer.h"
#include "framework/visuals/status_item.h"

/// The time of day, drawn anew once a minute.
class zStatusClock : public zStatusItemText {
 public:
  using TimeSource = std::time_t (*)();

  zStatusClock(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style = kStatusSunken);

  /// At the start it shows 12 hours, with AM or PM.
  void setUse24Hours(bool on);
  void setSeparator(const RWCString& newSeparator);
  /// A blank stands in the separator's place when it is off.
  void setColonVisible(bool on);
  bool takesText() const override { return false; }
  /// Looks at the time; the timer calls it.
  void tick();

  /// Where all clocks read the time; for tests. Null for the system's clock.
  static void setTimeSource(TimeSource source);

 private:
  static int ticked(zEvH* clock);
  void refit();
  RWCString timeText() const;

  RWCString separator = ":";
  RWCString amText = "AM";
  RWCString pmText = "PM";
  bool use24Hours = false;
  bool colonVisible = true;
  std::time_t lastTime = 0;
  std::unique_ptr<zTimer> timer;
};
