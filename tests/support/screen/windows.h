#pragma once

#include <string>

#include "framework/draw/xtfwd.h"

/// Windows as the server knows them, whoever owns them. A window may go at any moment, so callers
/// keep X errors from ending the process.
namespace screen {

/// Place and size on the screen, pixels.
struct ScreenArea {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool operator==(const ScreenArea&) const = default;
};

/// Where a window is on the screen, without its border.
ScreenArea areaOf(Display* display, Window window);

/// Whether the window and all around it are mapped.
bool isViewable(Display* display, Window window);

/// The topmost window with this title (WM_NAME) that is viewable; 0 when there is none.
Window windowWithTitle(Display* display, const std::string& title);

/// Whether a popup, such as a menu, is on the screen: a window that no window manager frames.
bool hasPopup(Display* display);

/// The window that has the keyboard focus.
Window inputFocus(Display* display);

/// Whether the keyboard focus is at `window` or inside it.
bool hasInputFocus(Display* display, Window window);

/// Asks for a window's end as the window manager's menu does. The request is queued only.
void askToClose(Display* display, Window window);

}  // namespace screen
