#include "framework/visuals/status_item.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "framework/core/timer.h"
#include "framework/draw/display.h"
#include "framework/draw/screen.h"
#include "framework/layout/sizers.h"
#include "framework/visuals/bevel.h"
#include "framework/visuals/status_line.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

// The plain fields.
constexpr int kFieldGap = 1;    // between fields
constexpr int kItemIndent = 4;  // from the field's edge
constexpr int kWidthMargin = 8;

// The clock.
constexpr unsigned long kClockTickMs = 500;
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

// The key items.
constexpr unsigned long kKeyTickMs = 1000;
constexpr const char* kNoWords = "MMM";  // what the width is measured by then

std::vector<ziStatusKeyItem*> keyItems;
std::unique_ptr<zTimer> keyTimer;  // while there is an item

using HeldKeys = char[32];  // a bit a key code

bool isKeyHeld(unsigned long keysym, Display* display, const HeldKeys& keys) {
  constexpr int kBitsPerByte = 8;
  const int key = XKeysymToKeycode(display, keysym);
  return (static_cast<unsigned char>(keys[key / kBitsPerByte]) >> (key % kBitsPerByte) & 1) != 0;
}

int keyTimerFired(zEvH* /*owner*/) {
  ziStatusKeyItem::tick();
  return 0;
}

}  // namespace

zStatusItem::zStatusItem(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style)
    : ziVisual(&line.visuals(), std::unique_ptr<zSizer>(sizer), style),
      statusLine(line),
      itemId(id) {
  line.addItem(this);
}

zStatusItem::~zStatusItem() {
  statusLine.removeItem(this);
}

zRect zStatusItem::field() const {
  return insetRect(rect(), kFieldGap);
}

void zStatusItem::redraw() {
  if (!statusLine.inMessageMode()) {
    paint();
  }
}

void zStatusItem::draw(zDisplay& display) {
  fillArea(display, rect(), kFaceColour);
  if ((style() & kStatusSunken) != 0) {
    drawBevel(display, field(), zBevel::kSunken);
  }
}

zStatusItemText::zStatusItemText(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style)
    : zStatusItem(line, sizer, id, style) {}

void zStatusItemText::setText(const RWCString& newText) {
  if (line().keepsForLater(*this, newText) || newText == string) {
    return;
  }
  string = newText;
  redraw();
}

void zStatusItemText::draw(zDisplay& display) {
  zStatusItem::draw(display);
  if (string.isEmpty()) {
    return;
  }
  zDimension size;
  display.textSize(size, string.c_str());
  const zRect inner = insetRect(field(), 1);
  const zPoint middle = centredIn(inner, size);
  const bool isCentred = (style() & kStatusCentred) != 0 && size.width <= inner.width();
  // A text that is too long is cut at the field's edge.
  display.intersectClip(inner);
  drawText(display, {isCentred ? middle.x : inner.left + kItemIndent, middle.y}, string);
  display.setClipRegion(nullptr);
}

void zStatusItemText::fitWidth(const std::vector<RWCString>& texts) {
  zDisplay* on = display();
  int widest = 0;
  on->lock();
  for (const RWCString& candidate : texts) {
    zDimension size;
    on->textSize(size, candidate.c_str());
    widest = std::max(widest, size.width);
  }
  on->unlock();
  if (sizer()->query(kSizerGrav) != nullptr) {
    static_cast<zGravSizer*>(sizer())->setExtent({widest + kWidthMargin, 0});
  }
}

zStatusClock::zStatusClock(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style)
    : zStatusItemText(line, sizer, id, style), lastTime(timeSource()) {
  refit();
  timer = std::make_unique<zTimer>(this, &zStatusClock::ticked, kClockTickMs);
}

void zStatusClock::setTimeSource(TimeSource source) {
  timeSource = source == nullptr ? systemTime : source;
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

zStatusOnOffItem::zStatusOnOffItem(zStatusLine& line, zSizer* sizer, int id, const RWCString& on,
                                   const RWCString& off, std::uint32_t style)
    : zStatusItemText(line, sizer, id, style), onText(on), offText(off) {
  storeText(offText);
  const std::size_t longest = std::max(onText.length(), offText.length());
  fitWidth({longest == 0 ? RWCString(kNoWords) : RWCString(std::string(longest, 'M'))});
  line.itemsChanged();
}

void zStatusOnOffItem::setOn(bool on) {
  const RWCString word = onText.isEmpty() ? RWCString(defaultOnText()) : onText;
  setText(on ? word : offText);
}

ziStatusKeyItem::ziStatusKeyItem(zStatusLine& line, zSizer* sizer, int id, const RWCString& on,
                                 const RWCString& off, unsigned long key)
    : zStatusOnOffItem(line, sizer, id, on, off), keysym(key) {
  keyItems.push_back(this);
  if (keyTimer == nullptr) {
    keyTimer = std::make_unique<zTimer>(nullptr, keyTimerFired, kKeyTickMs);
  }
}

ziStatusKeyItem::~ziStatusKeyItem() {
  std::erase(keyItems, this);
  if (keyItems.empty()) {
    keyTimer.reset();
  }
}

void ziStatusKeyItem::tick() {
  Display* display = theScreen().display;
  if (display == nullptr) {
    return;
  }
  HeldKeys keys = {};
  XQueryKeymap(display, keys);
  for (ziStatusKeyItem* item : keyItems) {
    item->setOn(isKeyHeld(item->keysym, display, keys));
  }
}

zStatusNumLock::zStatusNumLock(zStatusLine& line, zSizer* sizer, int id, const RWCString& on,
                               const RWCString& off)
    : ziStatusKeyItem(line, sizer, id, on, off, XK_Num_Lock) {}

zStatusCapsLock::zStatusCapsLock(zStatusLine& line, zSizer* sizer, int id, const RWCString& on,
                                 const RWCString& off)
    : ziStatusKeyItem(line, sizer, id, on, off, XK_Caps_Lock) {}
