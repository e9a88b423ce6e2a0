#include "framework/visuals/status_item.h"

#include <string>
#include <vector>

#include "framework/visuals/status_line.h"

namespace {

constexpr unsigned long kTickMs = 500;
constexpr std::time_t kSecondsPerMinute = 60;
constexpr int kNoon = 12;

std::time_t systemTime() {
  return std::time(nullptr);
}

zStatusClock::TimeSource timeSource = systemTime;

std::string twoDigits(int number) {
  const std::string digits = std::to_string(number);
  return digits.size() < 2 ? "0" + digits : digits;
}

}  // namespace

zStatusClock::zStatusClock(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style)
    : zStatusItemText(line, sizer, id, style), lastTime(timeSource()) {
  refit();
  timer = std::make_unique<zTimer>(this, &zStatusClock::ticked, kTickMs);
}

void zStatusClock::setTimeSource(TimeSource source) {
  timeSource = source == nullptr ? systemTime : source;
}

void zStatusClock::setUse24Hours(bool on) {
  use24Hours = on;
  refit();
}

void zStatusClock::setSeparator(const RWCString& newSeparator) {
  separator = newSeparator;
  refit();
}

void zStatusClock::setColonVisible(bool on) {
  colonVisible = on;
  setText(timeText());
}

// The widest form decides, so that the field never changes while the time goes on. Two digits of an
// hour may be wider than one M.
void zStatusClock::refit() {
  std::vector<RWCString> forms = {use24Hours ? "MM" + separator + "MM" : "M" + separator + "MM MM"};
  for (char digit = '0'; digit <= '9' && !use24Hours; ++digit) {
    const RWCString pair(std::string(2, digit));
    for (const RWCString& half : {amText, pmText}) {
      forms.push_back(pair + separator + pair + " " + half);
    }
  }
  fitWidth(forms);
  storeText(timeText());
  line().itemsChanged();
}

int zStatusClock::ticked(zEvH* clock) {
  static_cast<zStatusClock*>(clock)->tick();
  return 0;
}

void zStatusClock::tick() {
  const std::time_t now = timeSource();
  if (now / kSecondsPerMinute != lastTime / kSecondsPerMinute) {
    lastTime = now;
    storeText(timeText());
    redraw();
  }
}

RWCString zStatusClock::timeText() const {
  std::tm local = {};
  localtime_r(&lastTime, &local);
  const RWCString between = colonVisible ? separator : RWCString(" ");
  const RWCString minute(twoDigits(local.tm_min));
  if (use24Hours) {
    return RWCString(twoDigits(local.tm_hour)) + between + minute;
  }
  const int hour = local.tm_hour % kNoon;
  return RWCString(std::to_string(hour == 0 ? kNoon : hour)) + between + minute + " " +
         (local.tm_hour < kNoon ? amText : pmText);
}
