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
