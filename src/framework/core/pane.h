#pragma once

#include <memory>

#include "framework/core/window.h"
#include "framework/draw/displays.h"

/// What is common to the windows that the program paints: a display, which is ready from the first
/// exposure on, and the way from a burst of exposures to one draw.
class ziPainted : public ziDisplayOwner {
 public:
  /// Paints; called with the display locked on the exposed region.
  virtual int draw(zEvent* event) = 0;
  /// The display has become ready: the first exposure is here.
  virtual void displayReady() {}
  /// Paints what an exposure of the window's widget tells, and all others that wait. True if the
  /// window has gone in its paint, so that the event goes nowhere else.
  bool zPaneExposeProc(XEvent& event);

 protected:
  explicit ziPainted(zWindow& window)
      : painted(window), ownDisplay(std::make_unique<zWinDisplay>(*this)) {}

  /// The paint itself. The window may be gone afterwards.
  virtual void expose(XEvent& event);

  // What the display asks.
  Window displayWindow() const override;
  unsigned long backgroundPixel() const override;
  int displayPaintLock() const override;
  zRCFont displayFont() const override;

 private:
  zWindow& painted;

 protected:
  std::unique_ptr<zWinDisplay> ownDisplay;
};

/// A child window on which the program draws, an XmDrawingArea. It owns a display that is ready
/// from the first exposure on, and paints a whole burst of exposures in one draw.
class zPane : public zChildWin, public ziPainted {
 public:
  static constexpr int kClassNumber = kClassPane;

  enum Create : int { kCreateLater = 0, kCreateNow = 1 };

  zPane(zWindow* parent, zSizer* sizer, std::uint32_t style, int id, Create create = kCreateNow);
  /// Adoption: takes the place, the widget and all properties of the parent's child `id`, which
  /// lives on as placeholder and dies with this pane.
  zPane(zWindow* parent, int id);
  ~zPane() override;

  int draw(zEvent* event) override;
  virtual void scrollRect(int dx, int dy, const zRect& rect);

  int scroll(zEvent* event) override;
  int focus(zEvent* event) override;
  void setBackground(const zColor& colour) override;
  void show(int state = kShowNormal) override;
  void update() override;
  void setShowState(int state) override;
  /// Whether the keyboard may come to a pane that was made as a tab stop, and to what is in it.
  void setReachable(bool on);
  void createWidgets() override;
  void getExterior(zRect& rect) override;
  void moveResize(int x, int y, int width, int height) override;
  void setFont(const zRCFont& newFont, int redraw) override;
  void invalidate(zRect* rect, int erase) override;
  void invalidateRegion(zRegion* region, int erase) override;
  void sizeChildren(zEvent* event) override;
  int size(zEvent* event) override;

  /// The display now in force, normally the pane's own.
  zDisplay* display() const { return currentDisplay; }
  void pushDisplay(zDisplay* display);
  void popDisplay();

 protected:
  void removeEventHandlers() override;
  void expose(XEvent& event) override;

 private:
  zDimension clientSize() const override;
  zWindow* siblingById(int id);
  // Scroll bars of its own, which no pane of this program has.
  bool hasScrollBars() const { return vertScrollWidget != nullptr || horzScrollWidget != nullptr; }
  void createScrollBars();
  void placeWithScrollBars(const zRect& outer);
  void showScrollBars(int state);
  zDimension scrollBarExtents() const;
  /// The widget tells the size of what the bars leave; the sizer's is that of all.
  void keepOuterSize(const zEvent* event);

  zDisplay* currentDisplay;
  zDisplayStack displayStack;
  std::unique_ptr<zWindow> placeholder;
};
