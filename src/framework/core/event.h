#pragma once

#include <cstdint>

#include "framework/draw/xtfwd.h"

class zWindow;

/// What handlers and virtual operations are given: one message of the framework. Built on the stack
/// for each dispatch and never kept after it.
struct zEvent {
  XEvent* xevent = nullptr;  ///< the X event behind it, real or synthetic; null when there is none
  int reserved = 0;
  int message = 0;           ///< zMessageNumber
  std::intptr_t lparam = 0;  ///< keysym, notification code, owner or scroll bar object
  std::intptr_t wparam = 0;  ///< character code, command or control id, scroll code, new state
  int extra = 0;             ///< CommandSource or menu item flags
  zWindow* window = nullptr;

  /// The first message that a handler sees is built like this.
  static zEvent of(int message, std::intptr_t wparam = 0, zWindow* window = nullptr) {
    zEvent event;
    event.message = message;
    event.wparam = wparam;
    event.window = window;
    return event;
  }
};

/// Numbers of the framework's message vocabulary (the Win32 numbering). Each message's values are
/// told at the place that produces it; `zEvent` names the fields.
enum zMessageNumber : int {
  kMsgActivate = 6,       ///< shell focus; wparam 1 in, 0 out
  kMsgFocusIn = 7,        ///< focus gained
  kMsgFocusOut = 8,       ///< focus lost
  kMsgEnable = 10,        ///< sensitivity changed; wparam 1 or 0
  kMsgClose = 16,         ///< the window manager or the program asks to close
  kMsgKeyDown = 256,      ///< key press; wparam character or keysym, lparam keysym
  kMsgKeyUp = 257,        ///< key release
  kMsgChar = 258,         ///< character that no handler and no accelerator took
  kMsgCommand = 273,      ///< command; wparam id, lparam notification code or owner
  kMsgHorzScroll = 276,   ///< wparam ScrollCode, lparam scroll bar object
  kMsgVertScroll = 277,   ///< the same, vertical
  kMsgMenuInit = 278,     ///< a pulldown is about to be shown
  kMsgMenuSelect = 287,   ///< a menu item was armed or chosen
  kMsgMouseMove = 512,    ///< pointer motion
  kMsgButtonDown = 513,   ///< any button; the button is read from the X event
  kMsgButtonUp = 514,     ///<
  kMsgDoubleClick = 515,  ///< second press within the multi-click time
};

/// What a scroll message asks for (its wparam).
enum ScrollCode : int {
  kScrollLineUp = 0,
  kScrollLineDown = 1,
  kScrollPageUp = 2,
  kScrollPageDown = 3,
  kScrollThumbPosition = 4,
  kScrollThumbTrack = 5,
  kScrollTop = 6,
  kScrollBottom = 7,
  kScrollEnd = 8,
};

/// Where a command came from (`extra` of kMsgCommand).
enum CommandSource : int {
  kCommandFromMenu = 1,
  kCommandFromAccelerator = 2,
};

/// Character and key codes that handlers compare `wparam` with.
enum zKeyCode : int {
  kKeyBackspace = 8,
  kKeyReturn = 13,
  kKeyEscape = 27,
  kKeyLeft = 0xFF51,
  kKeyUp = 0xFF52,
  kKeyRight = 0xFF53,
  kKeyDown = 0xFF54,
  kKeyPageUp = 0xFF55,
  kKeyPageDown = 0xFF56,
  kKeyLeftControl = 0xFFE3,
};
