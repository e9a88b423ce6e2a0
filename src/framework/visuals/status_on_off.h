#pragma once

#include "framework/visuals/status_item.h"

/// A field that shows one of two words.
class zStatusOnOffItem : public zStatusItemText {
 public:
  zStatusOnOffItem(zStatusLine& line, zSizer* sizer, int id, const RWCString& onText,
                   const RWCString& offText, std::uint32_t style = kStatusSunken | kStatusCentred);

  bool takesText() const override { return false; }
  void setOn(bool on);

 protected:
  /// The word for on when none was given.
  virtual const char* defaultOnText() const { return ""; }

 private:
  RWCString onText;
  RWCString offText;
};

/// A word that shows while a key is held down. It is the key that is looked at, not the lock state
/// that it switches; that is intended. All such items follow one timer and one look at the
/// keyboard.
class ziStatusKeyItem : public zStatusOnOffItem {
 public:
  ~ziStatusKeyItem() override;

  /// Asks the keyboard, for all items; the timer calls it.
  static void tick();

 protected:
  ziStatusKeyItem(zStatusLine& line, zSizer* sizer, int id, const RWCString& onText,
                  const RWCString& offText, unsigned long keysym);

 private:
  unsigned long keysym;
};

class zStatusNumLock : public ziStatusKeyItem {
 public:
  zStatusNumLock(zStatusLine& line, zSizer* sizer, int id, const RWCString& onText = "",
                 const RWCString& offText = "");

 protected:
  const char* defaultOnText() const override { return "NUM"; }
};

class zStatusCapsLock : public ziStatusKeyItem {
 public:
  zStatusCapsLock(zStatusLine& line, zSizer* sizer, int id, const RWCString& onText = "",
                  const RWCString& offText = "");

 protected:
  const char* defaultOnText() const override { return "CAP"; }
};
