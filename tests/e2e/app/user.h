#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/deadline.h"
#include "tests/support/screen/keyboard.h"
#include "tests/support/screen/windows.h"
#include "tests/support/source_line.h"

/// The user in front of the program's screen: looks at windows, types and clicks, over an X
/// connection of the test's own. What does not come about in time fails the test and ends it.
class User {
 public:
  /// At the display of the test; or at another one.
  explicit User(const std::string& displayName = {});
  User(const User&) = delete;
  User& operator=(const User&) = delete;
  ~User();

  /// Waits until a window with this title, other than `known`, is viewable and has the focus. Where
  /// no window manager gives the focus to new windows the user does so.
  Window awaitWindow(const std::string& title, Window known = 0,
                     SourceLine where = SourceLine::current());
  void awaitGone(Window window, SourceLine where = SourceLine::current());

  /// Waits until a menu is on the screen, or until none is.
  void awaitMenu(SourceLine where = SourceLine::current());
  void awaitNoMenu(SourceLine where = SourceLine::current());
  /// Whether a menu comes within `time`.
  bool seesMenu(Milliseconds time) const;

  /// A line feed is the Return key.
  void type(std::string_view text);
  void press(screen::KeySymbol symbol, unsigned modifiers = screen::kNoModifier);

  /// Presses and releases the left button in the middle of a place, or at its left edge where the
  /// rest may be covered.
  void click(const screen::ScreenArea& place);
  void clickLeft(const screen::ScreenArea& place);
  /// Where the innermost windows of `window` are that can be seen, line by line.
  std::vector<screen::ScreenArea> fields(Window window) const;

  /// Closes a window by the window manager's menu.
  void close(Window window);
  /// Makes it an icon.
  void iconify(Window window);
  void resize(Window window, int width, int height);

  /// Selects all of the text in the largest text area of `window` by clicks, waits until it is
  /// `text` and leaves it selected. The keyboard goes to that area from then on.
  void expectText(Window window, const std::string& text, SourceLine where = SourceLine::current());

 private:
  Window windowWithTitle(const std::string& title) const;
  void waitFor(const std::function<bool()>& condition, const std::function<std::string()>& what,
               SourceLine where) const;
  void clickAllOf(Window area);
  void clickAt(int x, int y);
  bool select(Window window);
  std::string selection();

  Display* display;
  bool hasWindowManager;
  Window textArea = 0;
};
