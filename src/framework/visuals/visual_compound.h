#pragma once

#include <memory>

#include "framework/visuals/visual.h"
#include "support/lists.h"

class zWindow;

using ziVisualDList = zTypedDlist<ziVisual>;

/// The window in whose drawing area visuals stand.
class ziVisualHost {
 public:
  ziVisualHost() = default;
  ziVisualHost(const ziVisualHost&) = delete;
  ziVisualHost& operator=(const ziVisualHost&) = delete;
  virtual ~ziVisualHost() = default;

  virtual zDisplay* visualDisplay() const = 0;
  virtual zWindow* visualWindow() = 0;
};

/// A visual made of visuals, which it owns. The ones added last lie on top.
class ziCompound : public ziVisual {
 public:
  using ziVisual::ziVisual;
  ~ziCompound() override;

  bool intersects(const zRect& rect) const override;
  void paintIn(const zRect& rect) override;
  ziVisual* hitTest(const zPoint& point) override;
  // To the visual that has the mouse, otherwise to the one under the pointer.
  int mouseDown(zEvent* event) override;
  int mouseUp(zEvent* event) override;
  int mouseMove(zEvent* event) override;
  /// Paints all.
  void paint() override;

  // What concerns the mouse is kept in the root.
  /// From now on `visual` gets all mouse events, until releaseMouse().
  void captureMouse(ziVisual* visual) { root().captor = visual; }
  void releaseMouse() { captureMouse(nullptr); }
  ziVisual* mouseOwner() { return root().captor; }
  /// The button that the pointer is on, ready to be pressed.
  void setHotButton(ziVisual* button) { root().hot = button; }
  ziVisual* hotButton() { return root().hot; }

  // For the visuals themselves.
  void add(ziVisual* visual) { children.append(visual); }
  void remove(const ziVisual* visual);
  /// The root's host; null without one.
  virtual ziVisualHost* host() const;

 private:
  ziCompound& root() { return compound() == nullptr ? *this : compound()->root(); }
  ziVisual* receiver(const zEvent& event);

  mutable ziVisualDList children;
  ziVisual* captor = nullptr;
  ziVisual* hot = nullptr;
};

/// The root of the visuals in a control or a pane. Its sizer stands alone: layOut() places all.
class ziControlCompound : public ziCompound {
 public:
  /// `host` must outlive the compound.
  explicit ziControlCompound(ziVisualHost& host);

  /// Lays out the visuals in `rect`, pixels of the drawing area, unless they are there already.
  void layOut(const zRect& rect);
  ziVisualHost* host() const override { return &ownHost; }
  zDisplay* display() const override { return ownHost.visualDisplay(); }

 private:
  ziVisualHost& ownHost;
};

/// Where the pointer was at a mouse or crossing event, in the window of the event.
zPoint pointerAt(const zEvent& event);
/// Whether button 1 was down just before a motion or crossing event.
bool isButtonHeld(const zEvent& event);
/// Whether any button was.
bool isAnyButtonHeld(const zEvent& event);
