#pragma once

#include <Xm/XmAll.h>

#include "framework/core/connect_xm.h"
#include "framework/core/event.h"
#include "support/geometry.h"

class ziScrollBar;

class zWindow;

/// How X events and callbacks become framework events.

/// Every event but exposures and hints: for the windows' own widgets.
inline constexpr zEventKinds kWindowEvents{0x1f7ff7f};
/// The same without focus changes: a frame's board, whose shell gets those.
inline constexpr zEventKinds kFrameEvents{kWindowEvents.mask & ~FocusChangeMask};
inline constexpr zEventKinds kFocusEvents{FocusChangeMask};
/// Exposures, before the widget itself sees them.
inline constexpr zEventKinds kExposures{ExposureMask, true, XtListHead};

/// Callbacks of a window's own scroll bars.
void zVertScrollProc(zWindow& window, XmScrollBarCallbackStruct* data);
void zHorzScrollProc(zWindow& window, XmScrollBarCallbackStruct* data);

/// Moves `bar` as its widget reports in `data` and gives `window` the scroll message. The window
/// may be gone afterwards.
void scrollByWidget(zWindow& window, ziScrollBar& bar, int message,
                    const XmScrollBarCallbackStruct& data);

/// The character (or the keysym, when there is none) and the keysym of a key event.
struct zKeyLookup {
  long keysym = 0;
  long character = 0;    ///< the first byte, sign-extended; 0 when there is none
  bool hasText = false;  ///< the lookup gave at least one byte

  long code() const { return character != 0 ? character : keysym; }
};
zKeyLookup lookUpKey(XKeyEvent& event);
bool isControlDown(unsigned state);
/// Whether Alt is down in `state`: the modifier that the keyboard's Alt keys set, or the usual one
/// of a keyboard that has none.
bool isAltDown(unsigned state);
/// Whether Control or Alt is down in `state`: such keys are commands.
bool isCommandState(unsigned state);
/// Whether a key puts a character into a text: a printable one, without Control and Alt in `state`.
bool isPlainTyping(const zKeyLookup& key, unsigned state);

/// The size that the toolkit gave a widget. The server need not be asked for it.
zDimension widgetSize(Widget widget);
/// An extent that X takes: it has no empty windows, and its measures have 16 bits.
Dimension toWidgetExtent(int pixels);
/// Moves a widget within its parent and resizes it, as far as X can; its border stays.
void configureWidget(Widget widget, int x, int y, int width, int height);
/// Gives the window's widget the background that was set for it, if one was and it is there.
void applyBackground(const zWindow& window);
/// A ConfigureNotify that tells that size.
XEvent configureOf(Widget widget);
/// The size that a ConfigureNotify, real or synthetic, tells; `otherwise` for any other event.
zDimension configuredSize(const zEvent* event, const zDimension& otherwise);
/// Writes a height back into such an event.
void setConfiguredHeight(zEvent& event, int height);

/// Whether a focus event only tells that a menu took the keyboard or gave it back. The focus stays
/// where it is then; a change by the program would end the menu.
bool isGrabFocusEvent(const XEvent& event);

/// A dying window is no more the one that had the focus last.
void forgetFocusWindow(const zWindow* window);

/// Destroys a widget safely from inside its own callback: it disappears now and is destroyed by a
/// message that comes back through the event loop.
void destroyWidgetDeferred(Widget widget);
