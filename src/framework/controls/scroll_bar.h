#pragma once

#include <memory>

#include "framework/controls/control.h"
#include "framework/core/interfaces.h"

class ziScrollBarCallbacks;
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
  int wheelTurned(zEvent* event);
  /// kMsgVertScroll or kMsgHorzScroll, by what the widget is now.
  int scrollMessage() const;

  friend class ziScrollBarCallbacks;

  zWindow* positionHolder;  ///< its vertBar() or horzBar() owns the position
  zScrollPos* pos;
  std::unique_ptr<ziScrollBarCallbacks> callbacks;
  bool isPressed = false;
};

/// A free-standing scroll bar, vertical with kScrollBarVertical.
class zScrollBarCtrl : public zScrollBarBase {
 public:
  static constexpr int kClassNumber = kClassScrollBarCtrl;
  zScrollBarCtrl(zWindow* parent, zSizer* sizer, std::uint32_t style, const char* text = "",
                 int id = -1);
};

/// The vertical bar of a window, at its right edge; its position is the window's vertBar(). A
/// window has one at most.
class zScrollBarVert : public zScrollBarBase {
 public:
  static constexpr int kClassNumber = kClassScrollBarVert;
  explicit zScrollBarVert(zWindow* window, int id = -1);
};

/// The horizontal bar of a window, at its bottom edge; its position is the window's horzBar(). A
/// window has one at most.
class zScrollBarHorz : public zScrollBarBase {
 public:
  static constexpr int kClassNumber = kClassScrollBarHorz;
  explicit zScrollBarHorz(zWindow* window, int id = -1);
};
