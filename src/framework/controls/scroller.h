#pragma once

#include "framework/core/event.h"
#include "framework/core/evh.h"
#include "framework/core/interfaces.h"

class zScrollPos;
class zWindow;

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
