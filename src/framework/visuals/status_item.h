#pragma once

#include <ctime>
#include <memory>
#include <vector>

#include "framework/core/timer.h"
#include "framework/visuals/visual.h"
#include "support/rwc_string.h"

class zStatusLine;

/// Look of a status item.
enum zStatusItemStyle : std::uint32_t {
  kStatusSunken = 1,  ///< in a sunken field
  kStatusCentred = 2,
};

/// A field of a status line, which owns it.
class zStatusItem : public ziVisual {
 public:
  /// `sizer` becomes the item's and joins those of the line's items: bars at the edges, and one
  /// that fills the rest (see zNormalLayout). `style` is a set of zStatusItemStyle.
  zStatusItem(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style);
  ~zStatusItem() override;

  int id() const { return itemId; }
  zStatusLine& line() const { return statusLine; }
  /// Whether setText is for the program: false for items that fill themselves.
  virtual bool takesText() const { return false; }
  /// Draws at once, unless the line shows a help text.
  void redraw();
  /// Clears the field and draws its edge.
  void draw(zDisplay& display) override;

 protected:
  /// The part inside the edge.
  zRect field() const;

 private:
  zStatusLine& statusLine;
  int itemId;
};

/// A field with a text.
class zStatusItemText : public zStatusItem {
 public:
  zStatusItemText(zStatusLine& line, zSizer* sizer, int id, std::uint32_t style = kStatusSunken);

  const RWCString& text() const { return string; }
  void setText(const RWCString& newText);
  bool takesText() const override { return true; }
  void draw(zDisplay& display) override;

 protected:
  void storeText(const RWCString& newText) { string = newText; }
  /// Makes the field as wide as the widest of `texts` needs.
  void fitWidth(const std::vector<RWCString>& texts);

 private:
  RWCString string;
};

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
