#pragma once

#include <cstdint>
#include <string>

// What windows must know of things that live on higher floors.

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

/// A control with a list that drops down over other windows. At most one is open in the program.
class ziDropDown {
 public:
  virtual ~ziDropDown() = default;
  /// Clears openCombo before it notifies anybody.
  virtual void hideDropDown() = 0;
};

/// The drop-down that is open now, or null. Whoever opens one closes the other first.
extern ziDropDown* openCombo;

/// Hides the open drop-down, if there is one. Another may be open afterwards: its owner is told.
void closeOpenDropDown();

struct ControlRecord;
class zSizer;
class zWindow;

/// How dialogs make the controls that their resources tell: the built-in classes, and further ones
/// that are registered by name.

/// Makes the control of a dialog resource's record in `parent`, which owns it, on `sizer`, which
/// the control takes. Null, with `sizer` untouched, for a class that it does not make.
using zRecordControlMaker = zWindow* (*)(zWindow* parent, const ControlRecord& record,
                                         zSizer* sizer);

/// Makes the class `name` known; the result is the number by which records ask for it. `maker` may
/// be null for a class that is known but cannot be made. A second registration of a name gives it
/// another maker.
std::uint32_t registerControlClass(const std::string& name, zRecordControlMaker maker = nullptr);

/// The maker of a registered class, by its number; null when there is none.
zRecordControlMaker registeredControlMaker(std::uint32_t controlClass);

/// The maker that dialogs use for all records; the folder of the controls gives it.
void setRecordControlMaker(zRecordControlMaker maker);
zRecordControlMaker recordControlMaker();
