#pragma once

struct zEvent;

/// What windows must know of a scroll bar: the position that it stands for. The bar itself lives on
/// the floor of the controls.
class ziScrollBar {
 public:
  virtual ~ziScrollBar() = default;

  virtual int position() const = 0;
  virtual int lineStep() const = 0;
  virtual int pageStep() const = 0;
  virtual int minimum() const = 0;
  virtual int maximum() const = 0;
  /// Clamps to the range, stores, and moves the slider.
  virtual void setPosition(int position) = 0;
};

/// What windows must know of a scroller, the object that decides what scrolling means.
class ziScroller {
 public:
  virtual ~ziScroller() = default;

  /// Takes a scroll message; non-zero means handled.
  virtual int dispatchScroll(zEvent* event) = 0;
  /// The window has a new size.
  virtual void resized() = 0;
};
