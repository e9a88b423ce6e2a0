#pragma once

#include <string_view>

#include "framework/draw/xtfwd.h"
#include "tests/support/screen/keyboard.h"

namespace ui {

using screen::KeySymbol;
using enum screen::Modifiers;

enum MouseButton : unsigned {
  kLeftButton = 1,
  kMiddleButton = 2,
  kRightButton = 3,
};

/// Presses and releases a key of the keyboard; it goes where the focus is. A symbol that the
/// keyboard does not have is put on a spare key first. Shift is added where the symbol needs it.
void pressKey(KeySymbol symbol, unsigned modifiers = kNoModifier);

/// Types text, Latin-1, a key a character; a line feed is the Return key.
void typeText(std::string_view text);

/// Moves the pointer to a place in a window or widget, pixels from its upper left corner.
void moveTo(Window window, int x, int y);
void moveTo(Widget widget, int x, int y);

/// Presses or releases a button where the pointer is.
void pressButton(MouseButton button = kLeftButton);
void releaseButton(MouseButton button = kLeftButton);

/// Moves there, presses and releases.
void click(Window window, int x, int y, MouseButton button = kLeftButton);
void click(Widget widget, int x, int y, MouseButton button = kLeftButton);
/// In the middle of the widget.
void click(Widget widget, MouseButton button = kLeftButton);

/// Two clicks that count as a double one, in the middle of the widget.
void doubleClick(Widget widget);

/// Turns the wheel over a place in a widget: up by `notches`, down when negative.
void wheel(Widget widget, int x, int y, int notches);

}  // namespace ui
