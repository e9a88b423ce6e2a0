#include "framework/furniture/status_on_off.h"

#include <algorithm>
#include <string>

#include "framework/draw/screen.h"
#include "framework/furniture/status_line.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

constexpr unsigned long kTickMs = 1000;
constexpr const char* kNoWords = "MMM";  // what the width is measured by then

bool isKeyHeld(unsigned long keysym) {
  constexpr int kBitsPerByte = 8;
  Display* display = theScreen().display;
  const int key = display == nullptr ? 0 : XKeysymToKeycode(display, keysym);
  if (key == 0) {
    return false;
  }
  char keys[32] = {};
  XQueryKeymap(display, keys);
  return (static_cast<unsigned char>(keys[key / kBitsPerByte]) >> (key % kBitsPerByte) & 1) != 0;
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
    : zStatusOnOffItem(line, sizer, id, on, off),
      keysym(key),
      timer(std::make_unique<zTimer>(this, &ziStatusKeyItem::ticked, kTickMs)) {}

int ziStatusKeyItem::ticked(zEvH* item) {
  static_cast<ziStatusKeyItem*>(item)->tick();
  return 0;
}

void ziStatusKeyItem::tick() {
  setOn(isKeyHeld(keysym));
}

zStatusNumLock::zStatusNumLock(zStatusLine& line, zSizer* sizer, int id, const RWCString& on,
                               const RWCString& off)
    : ziStatusKeyItem(line, sizer, id, on, off, XK_Num_Lock) {}

zStatusCapsLock::zStatusCapsLock(zStatusLine& line, zSizer* sizer, int id, const RWCString& on,
                                 const RWCString& off)
    : ziStatusKeyItem(line, sizer, id, on, off, XK_Caps_Lock) {}
