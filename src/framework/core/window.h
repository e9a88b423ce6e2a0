#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "framework/core/event.h"
#include "framework/core/interfaces.h"
#include "framework/core/notify.h"
#include "framework/draw/color.h"
#include "framework/draw/font.h"
#include "framework/draw/pictures.h"
#include "framework/layout/sizer.h"
#include "resources/styles.h"
#include "support/geometry.h"
#include "support/lists.h"
#include "support/rwc_string.h"

class zRegion;
class zWindow;

using zWindowDlist = zTypedDlist<zWindow>;

/// Show states (the Win32 show commands).
enum zShowState : int {
  kShowHide = 0,
  kShowNormal = 1,
  kShowMinimized = 2,
  kShowMaximized = 3,
  kShowMinimize = 6,
  kShowMinNoActive = 7,
};

/// Base of all windows: a node of the window tree, a place in the layout, an Xt widget, and the
/// handlers that its events run through. A parent owns its children and deletes them; a window owns
/// its sizer. The object exists before its widget and every operation allows for that.
class zWindow : public zEvH, public ziSizerWindow {
 public:
  static constexpr int kClassNumber = kClassWindow;
  static constexpr std::uint32_t kNoBackground = static_cast<std::uint32_t>(-2);

  /// Enters itself at the end of the parent's children. `sizer` becomes this window's; with null a
  /// plain one is made.
  zWindow(zWindow* parent, zSizer* sizer, std::uint32_t style);
  ~zWindow() override;

  // Events. Non-zero means handled.
  virtual void sizeChildren(zEvent* event);
  virtual int activate(zEvent* event);
  virtual int size(zEvent* event);
  virtual int move(zEvent* event);
  /// Non-zero keeps the window open.
  virtual int close(zEvent* event);
  virtual int command(zEvent* event);
  virtual int scroll(zEvent* event);
  virtual int mouseMove(zEvent* event);
  virtual int mouseButtonUp(zEvent* event);
  virtual int mouseButtonDown(zEvent* event);
  virtual int focus(zEvent* event);
  virtual int character(zEvent* event);
  virtual void buttonPressNotify(zEvent* event);
  /// Turns an X event of the window's widget into a zEvent and offers it to the handlers, then to
  /// the operation above. The window may be gone afterwards.
  void zWindowEventProc(XEvent& event);

  // State and geometry.
  virtual void getInterior(zRect& rect);
  virtual void getExterior(zRect& rect);
  virtual void setShowState(int state);
  virtual void setBackground(const zColor& colour);
  /// The background of `other`, unless that has none of its own and looks as the toolkit draws it.
  void takeBackgroundOf(const zWindow& other);
  virtual void show(int state = kShowNormal);
  virtual void update();
  virtual int enable();
  virtual int disable();
  virtual void setFontSpec(const zFontSpec& spec, int redraw);
  /// Shares `font` with this window and its children; an empty handle changes nothing.
  virtual void setFont(const zRCFont& newFont, int redraw);
  /// That of the parent, if there is one.
  void takeParentsFont();
  /// Asks for a repaint of `rect` (of everything with null); does nothing while paintLock is set.
  virtual void invalidate(zRect* rect, int erase);
  virtual void invalidateRegion(zRegion* region, int erase);
  void moveResize(int x, int y, int width, int height) override;

  // Data exchange with the children, and focus between them.
  virtual int childrenValid();
  virtual int storeChildren();
  virtual int focusInvalidChild(zWindow* child);
  virtual int childFocusChanged(zWindow* previous, zWindow* current);

  // Handlers.
  void addHandler(zEvH* target, zHandler member, int message);
  /// As addHandler, for messages that only zDispatch brings: the mouse and focus mask stays.
  void addPlainHandler(zEvH* target, zHandler member, int message);
  void removeHandler(zEvH* target, zHandler member, int message);
  /// Binds this child's commands (by its id) in the parent. Nothing happens without a parent.
  void addParentHandler(zEvH* target, zHandler member);
  void removeParentHandler(zEvH* target, zHandler member);
  /// Binds one notification code of this child in the parent.
  void addCtrlHandler(zEvH* target, zHandler member, int code);
  void removeCtrlHandler(zEvH* target, zHandler member, int code);
  void addHandlerMask(std::uint32_t bits) { handlerMask |= bits; }
  /// Offer the event to the bindings of one list; 1 if one took it. The window may be gone after.
  int runHandlers(zEvent& event) { return handlers == nullptr ? 0 : handlers->run(event); }
  int runCtrlHandlers(zEvent& event) {
    return ctrlHandlers == nullptr ? 0 : ctrlHandlers->run(event);
  }

  // The tree.
  zWindow* parent() const { return parentWindow; }
  zWindowDlist& children() { return childWindows; }
  /// The next (previous) child of the parent, round the end; this window when there is no other.
  zWindow* nextSibling();
  zWindow* previousSibling();
  zWindow* childById(int childId);
  /// The first child that is a default push button, or null.
  zWindow* defaultButton();

  // Plain properties.
  int id() const { return windowId; }
  void setId(int newId) { windowId = newId; }
  std::uint32_t style() const { return styleBits; }
  void setStyle(std::uint32_t bits) { styleBits = bits; }
  zSizer* sizer() const { return ownSizer.get(); }
  Widget widget() const { return mainWidget; }
  Widget innerWidget() const { return inner; }
  const RWCString& className() const { return classNameText; }
  /// The font in force, or null.
  zFont* fontObject() const { return font.font(); }
  const zRCFont& fontHandle() const { return font; }
  /// Pixel of the background, kNoBackground when none was set.
  std::uint32_t background() const { return backPixel; }
  const zColor& backgroundColour() const { return backgroundRgb; }
  ziScrollBar* vertBar() const { return vertScroll.get(); }
  ziScrollBar* horzBar() const { return horzScroll.get(); }
  void setVertBar(std::unique_ptr<ziScrollBar> bar) { vertScroll = std::move(bar); }
  void setHorzBar(std::unique_ptr<ziScrollBar> bar) { horzScroll = std::move(bar); }
  void setScroller(ziScroller* newScroller) { scroller = newScroller; }
  virtual bool isEnabled() const;
  void setDeleteOnUnmap(int on) { setState(kDeleteOnUnmap, on != 0); }
  void setCursor(const zCursor& cursor);
  void lockPaint() { ++paintLock; }
  void unlockPaint() { --paintLock; }
  std::uint32_t paintLocks() const { return paintLock; }

  /// Gives the input focus to this window 150 milliseconds from now, replacing a pending request.
  virtual void startFocusTimer();
  /// Takes the focus at once; false, and nothing is done, while a menu has the keyboard.
  bool takeFocus();
  /// Turns `rect` from this window's coordinates into those of `other`, of the screen with null.
  void mapRectToWindow(zWindow* other, zRect& rect);

  bool hasWidget() const override { return mainWidget != nullptr; }
  void sizerReplaced(zSizer& newSizer) override;

 protected:
  /// Bits of handlerMask: raw classes that have handlers.
  enum HandlerMask : std::uint32_t {
    kMaskMenu = 0x08,
    kMaskButtonUp = 0x10,
    kMaskMouseMove = 0x20,
    kMaskActivate = 0x40,
    kMaskClose = 0x80,
    kMaskButtonDown = 0x100,
    kMaskFocusIn = 0x200,
  };
  /// Makes the list on first use.
  zNotifyNodeDlist& ensureHandlers();
  zNotifyNodeDlist& ensureCtrlHandlers();
  bool isRealized() const;
  void setClassName(const char* name) { classNameText = name; }
  /// The resize sequence that every change of the widget's size runs through.
  void runResizeSequence(zEvent& event);
  /// Takes over everything that `other` stands for on the screen; see zPane's adoption.
  void adoptFrom(zWindow& other);
  /// Applies the current font to the widgets, as far as they are there.
  virtual void applyFontToWidget();
  /// What enable and disable set; compound controls have more than one widget.
  virtual void applySensitivity(bool on);
  /// The widget whose sensitivity isEnabled reads.
  virtual Widget sensitivityWidget() const { return mainWidget; }
  /// Takes this window's procedures off `mainWidget`, which another window takes over.
  virtual void removeEventHandlers();
  /// Stops a pending focus request.
  void cancelFocusTimer();

  Widget mainWidget = nullptr;
  Widget inner = nullptr;
  Widget scrollClip = nullptr;
  Widget vertScrollWidget = nullptr;
  Widget horzScrollWidget = nullptr;
  RWCString text;
  RWCString widgetName;
  std::uint32_t backPixel = kNoBackground;
  zColor backgroundRgb = kColorWhite;
  std::uint32_t paintLock = 0;
  ziScroller* scroller = nullptr;
  std::unique_ptr<zCursor> cursor;

 private:
  using Operation = int (zWindow::*)(zEvent*);

  // The steps of zWindowEventProc.
  void keyPress(zEvent& event);
  void keyRelease(zEvent& event);
  void buttonPress(zEvent& event);
  void mouse(zEvent& event, unsigned mask, Operation operation);
  void focusChange(zEvent& event);
  void unmapped();
  void mapped(zEvent& event);
  void configured(zEvent& event);

  void noteHandlerMask(int message);
  void destroyWidgets();
  void adoptWidgets(zWindow& other);
  void focusTimerFired();

  zRCFont font;
  int windowId = -1;
  std::uint32_t handlerMask = 0;
  std::unique_ptr<zSizer> ownSizer;
  std::uint32_t styleBits;
  RWCString classNameText = "WindowCL";
  std::unique_ptr<ziScrollBar> vertScroll;
  std::unique_ptr<ziScrollBar> horzScroll;
  std::unique_ptr<zNotifyNodeDlist> handlers;
  std::unique_ptr<zNotifyNodeDlist> ctrlHandlers;
  zWindowDlist childWindows;
  zWindow* parentWindow;
  unsigned long focusTimer = 0;
};

/// Offers an event to the window's control handlers, its handlers and the application's handlers,
/// then, for a command, to window->command. Non-zero if one took it. The window may be gone after.
int zDispatch(zEvent& event, zWindow* window);
/// The same for mouse and focus classes: no control handlers, no command.
int zDispatchHandlers(zEvent& event, zWindow* window);

/// A child window: its widget lies inside its parent's.
class zChildWin : public zWindow {
 public:
  static constexpr int kClassNumber = kClassChildWin;

  /// Makes no widget. With no sizer, the window follows its parent's size.
  zChildWin(zWindow* parent, zSizer* sizer, std::uint32_t style);

  int character(zEvent* event) override;
  void show(int state = kShowNormal) override;

  virtual void createWidgets();
};
