#pragma once

#include <string>

#include "framework/draw/xtfwd.h"
#include "tests/support/screen/windows.h"

namespace ui {

using screen::ScreenArea;

/// The X window of a widget; of a gadget, its parent's. 0 while it is not realized.
Window windowOf(Widget widget);

/// Where a window, widget or gadget is on the screen, without its border.
ScreenArea areaOf(Window window);
ScreenArea areaOf(Widget widget);

/// Whether the window and all around it are mapped.
bool isViewable(Window window);
bool isViewable(Widget widget);

/// The window with this title (WM_NAME) that is viewable, whoever owns it; 0 when there is none.
Window windowWithTitle(const std::string& title);

/// The window that has the keyboard focus by the server.
Window inputFocus();

/// Whether the keyboard focus is at `window` or inside it.
bool hasInputFocus(Window window);

/// Whether keys go to this widget: its shell has the server's focus and it has its shell's.
bool focusIs(Widget widget);
void waitForFocus(Widget widget);

/// Waits until the window with this title is viewable and has the focus, and returns it.
Window waitForDialog(const std::string& title);
/// Waits until no window with this title is viewable.
void waitForNoDialog(const std::string& title);

/// Asks for a window's end as the window manager's menu does.
void closeByWindowManager(Window window);

}  // namespace ui
