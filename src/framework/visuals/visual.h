#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "framework/core/event.h"
#include "framework/core/evh.h"
#include "framework/layout/sizer.h"
#include "support/geometry.h"
#include "support/rwc_string.h"

class ziCompound;
class zDisplay;

/// A drawing attribute of a visual, in force on the display while the visual draws.
class ziAspect : public zStorable {
 public:
  /// Both with the display locked; calls are paired, the last applied is the first undone.
  virtual void apply(zDisplay& display) = 0;
  virtual void undo(zDisplay& display) = 0;
};

/// A drawable thing inside the one drawing area of a control or a pane: no widget, only a place, a
/// state and the ability to paint itself and to take mouse events. Its compound owns it, it owns
/// its sizer and its aspects.
///
/// Painting does nothing before the drawing area's first exposure.
class ziVisual : public zEvH {
 public:
  /// Joins `owner` at the end, its sizer the children of the owner's; `owner` may be null.
  ziVisual(ziCompound* owner, std::unique_ptr<zSizer> sizer, std::uint32_t styleBits = 0);
  ~ziVisual() override;

  /// Whether it shows anything inside `rect`.
  virtual bool intersects(const zRect& rect) const;
  virtual bool containsPoint(const zPoint& point) const;
  /// Paints if it shows anything inside `rect`.
  virtual void paintIn(const zRect& rect);
  /// The visual to which a mouse event at `point` belongs; null for none.
  virtual ziVisual* hitTest(const zPoint& point);
  // Mouse events, button 1 and motion; non-zero means handled. The visual may be gone afterwards.
  virtual int mouseDown(zEvent* event);
  virtual int mouseUp(zEvent* event);
  virtual int mouseMove(zEvent* event);
  /// Draws at once, with the aspects in force, if it is visible.
  virtual void paint();
  virtual void applyAspects(zDisplay& display);
  /// Draws; called by paint() with the display locked.
  virtual void draw(zDisplay& display);
  /// Takes effect on the screen at the next paint of the compound.
  virtual void setVisible(int on) { visible = on != 0; }
  /// Undoes applyAspects.
  virtual void resetAspects(zDisplay& display);

  bool isVisible() const { return visible; }
  std::uint32_t style() const { return styleBits; }
  zSizer* sizer() const { return ownSizer.get(); }
  zRect rect() const { return ownSizer->rect(); }
  ziCompound* compound() const { return ownCompound; }
  /// What it is drawn on; null without a root.
  virtual zDisplay* display() const;
  void addAspect(std::unique_ptr<ziAspect> aspect);

 private:
  ziCompound* ownCompound;
  std::unique_ptr<zSizer> ownSizer;
  std::unique_ptr<std::vector<std::unique_ptr<ziAspect>>> aspects;  ///< made on first use
  bool visible = true;
  std::uint32_t styleBits;
};

/// How a visual control looks.
enum zVisualState : int {
  kVisualIdle = 0,  ///< up, for a latching button
  kVisualUp = 1,
  kVisualDown = 2,  ///< down, for a latching button
  kVisualHeld = 3,  ///< held down
  kVisualDisabled = 4,
};

/// A visual with a state.
class ziVisControl : public ziVisual {
 public:
  using ziVisual::ziVisual;

  /// By the state.
  void draw(zDisplay& display) override;
  // Each stores the state that it draws.
  virtual void drawUp(zDisplay& display);
  virtual void drawDisabled(zDisplay& display);
  /// Stores the state and shows it.
  virtual void setVisualState(zVisualState newState);

  zVisualState visualState() const { return state; }

 protected:
  zVisualState state = kVisualUp;
};
