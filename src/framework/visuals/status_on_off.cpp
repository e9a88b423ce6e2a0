#include "framework/visuals/status_item.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "framework/core/timer.h"
#include "framework/draw/screen.h"
#include "framework/visuals/status_line.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

constexpr unsigned long kTickMs = 1000;
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
    keyTimer = std::make_unique<zTimer>(nullptr, keyTimerFired, kTickMs);
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
