#pragma once

#include <string>
#include <string_view>

#include "framework/draw/xtfwd.h"

/// A screen as a user has it, over any connection to an X server: windows, whoever owns them, keys
/// and mouse (by the XTEST extension).
namespace screen {

/// Numbers of X11/keysymdef.h, which test files may include: it defines names XK_... only.
using KeySymbol = unsigned long;

/// Modifiers held down round a key; add them up.
enum Modifiers : unsigned { kNoModifier = 0, kShift = 1U << 0, kControl = 1U << 1, kAlt = 1U << 2 };

enum MouseButton : unsigned { kLeftButton = 1, kMiddleButton, kRightButton, kWheelUp, kWheelDown };

/// Place and size on the screen, pixels.
struct ScreenArea {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool operator==(const ScreenArea&) const = default;
};

class Screen {
 public:
  explicit Screen(Display* opened) : connection(opened) {}
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  virtual ~Screen() = default;

  Display* display() const { return connection; }

  // What is asked of a window that has gone is nothing: an empty area, not viewable.

  /// Where a window is on the screen, without its border.
  ScreenArea areaOf(Window window) const;
  /// Whether the window and all around it are mapped.
  bool isViewable(Window window) const;
  /// The topmost window with this title (WM_NAME) that is viewable; 0 when there is none.
  Window windowWithTitle(const std::string& title) const;
  /// Whether a popup, such as a menu, is on the screen: a window that no window manager frames.
  bool hasPopup() const;
  /// The window that has the keyboard focus, and whether it is at `window` or inside it.
  Window inputFocus() const;
  bool hasInputFocus(Window window) const;

  /// Presses and releases a key; it goes where the focus is. A symbol that the keyboard does not
  /// have is put on one of its last keys first. Shift is added where the symbol needs it.
  void press(KeySymbol symbol, unsigned modifiers = kNoModifier);
  /// Types text, Latin-1, a key a character; a line feed is the Return key, a tab the Tab key.
  void type(std::string_view text);
  void moveTo(int x, int y);
  /// Presses or releases a button where the pointer is.
  void button(unsigned number, bool isDown);
  /// Asks for a window's end as the window manager's menu does.
  void close(Window window);
  /// A question to the window manager, as an unmapped window: it answers after all that has
  /// happened before. 0 when there is no window manager that answers.
  Window askWindowManager();
  /// Whether it has answered; the question is over then.
  bool hasAnswered(Window question);

 protected:
  /// Called after each piece of input; tells the connection of new keys too.
  virtual void settle();

 private:
  Display* connection;
  int newSymbols = 0;
};

}  // namespace screen
