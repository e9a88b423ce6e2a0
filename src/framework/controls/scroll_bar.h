#pragma once

#include "framework/controls/control.h"
#include "framework/core/event.h"
#include "framework/core/evh.h"
#include "framework/core/interfaces.h"

class zScrollBarBase;
class zScrollerBase;

/// What a scroll bar stands for: a position in a range, and the steps in which it moves. The widget
/// of the bar follows. Units are the user's, pixels or lines.
class zScrollPos : public ziScrollBar {
 public:
  /// Both ends belong to the range.
  struct Range {
    int minimum = 0;
    int maximum = 100;
    bool operator==(const Range&) const = default;
  };

  explicit zScrollPos(const zScrollBarBase& owner) : bar(owner) {}

  /// A position outside becomes the minimum.
  void setRange(int minimum, int maximum);
  /// What a click into the trough moves, and how much of the content is seen: the slider's size.
  /// At least 1.
  void setPage(int newPage);
  /// What a click on an arrow moves.
  void setLine(int newLine);
  void setPosition(int newPosition) override;

  int position() const override { return current; }
  /// The position before the last setPosition.
  int previousPosition() const { return previous; }
  int line() const { return lineSize; }
  int page() const { return pageSize; }
  const Range& range() const { return limits; }

  int lineStep() const override { return lineSize; }
  int pageStep() const override { return pageSize; }
  int minimum() const override { return limits.minimum; }
  int maximum() const override { return limits.maximum; }

 private:
  void showRange() const;

  const zScrollBarBase& bar;
  Range limits;
  int pageSize = 10;
  int lineSize = 1;
  int current = 0;
  int previous = 0;
};

/// Base of the scroll bars. What the user does moves the position and is then told as a scroll
/// message (kMsgVertScroll or kMsgHorzScroll, zScrollCode, the position object in lparam) to the
/// bar's scroller, without one to the parent's scroll operation.
class zScrollBarBase : public zControl {
 public:
  static constexpr int kClassNumber = kClassScrollBarBase;

  ~zScrollBarBase() override;

  zScrollPos* scrollPos() const { return pos; }
  /// `newScroller` gets this bar as its owner; the caller keeps it and withdraws it with null
  /// before it dies.
  void setScroller(zScrollerBase* newScroller);

  /// Moves by `lines` line steps, upwards when negative, and tells it as the user's doing. The bar
  /// may be gone after the call.
  int scrollLines(int lines, XEvent* xevent = nullptr);
  /// Lets the wheel scroll by this bar while the pointer is in `window`, of which no event may come
  /// when the bar is gone. With Shift the wheel is the horizontal bar's.
  void takeWheelOf(zWindow& window);

  int scroll(zEvent* event) override;
  int mouseButtonDown(zEvent* event) override;
  int mouseButtonUp(zEvent* event) override;

 protected:
  /// Whose position it is: that of the parent, or of the bar itself.
  enum class Belonging { toParent, toItself };
  zScrollBarBase(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text, int id,
                 Belonging belonging);

 private:
  void createBar(bool isVertical);
  template <class Data>
  void onScrolled(Data* data);
  int wheelTurned(zEvent* event);
  /// kMsgVertScroll or kMsgHorzScroll, by what the widget is now.
  int scrollMessage() const;

  zWindow* positionHolder;  ///< its vertBar() or horzBar() owns the position
  zScrollPos* pos;
  bool isPressed = false;
};

/// A free-standing scroll bar, vertical with kScrollBarVertical.
class zScrollBarCtrl : public zScrollBarBase {
 public:
  static constexpr int kClassNumber = kClassScrollBarCtrl;
  zScrollBarCtrl(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text = "",
                 int id = -1);
};

/// Decides what scrolling means. A subclass overrides the actions that it treats in its own way;
/// all others end in vertThumbPosition or horzThumbPosition. Each action finds the new position in
/// the position object. Whoever makes a scroller owns it.
class zScrollerBase : public zEvH, public ziScroller {
 public:
  explicit zScrollerBase(zWindow* owner = nullptr) : served(owner) {}

  /// The window or scroll bar that is served.
  virtual void setOwner(zWindow* window) { served = window; }
  zWindow* owner() const { return served; }

  void resized() override {}
  int dispatchScroll(zEvent* event) override { return dispatch(event); }

  /// Calls the action that a scroll message asks for, as its last act; the result is the action's.
  /// 1 when the position has not changed, 0 for what is no scroll message of the owner.
  virtual int dispatch(zEvent* event);

  virtual int vertLine(zEvent* event) { return vertThumbPosition(event); }
  virtual int vertPage(zEvent* event) { return vertThumbPosition(event); }
  virtual int vertTop(zEvent* event) { return vertThumbPosition(event); }
  virtual int vertBottom(zEvent* event) { return vertThumbPosition(event); }
  virtual int vertThumbPosition(zEvent* event);
  virtual int vertThumbTrack(zEvent* event) { return vertThumbPosition(event); }

  virtual int horzLine(zEvent* event) { return horzThumbPosition(event); }
  virtual int horzPage(zEvent* event) { return horzThumbPosition(event); }
  virtual int horzTop(zEvent* event) { return horzThumbPosition(event); }
  virtual int horzBottom(zEvent* event) { return horzThumbPosition(event); }
  virtual int horzThumbPosition(zEvent* event);
  virtual int horzThumbTrack(zEvent* event) { return horzThumbPosition(event); }

  /// Comes before everything else but the end of scrolling.
  virtual int beforeScroll(zEvent* event);

 protected:
  void announce(zEvent* event);
  /// The row of the action table.
  int act(zEvent* event);

 private:
  zScrollPos* ownersPosition(int message) const;

  zWindow* served;
};

/// The scroller of a free-standing bar: it is told of every action, also when the position has not
/// changed.
class zControlScroller : public zScrollerBase {
 public:
  using zScrollerBase::zScrollerBase;
  int dispatch(zEvent* event) override;
};
