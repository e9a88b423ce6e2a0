#pragma once

#include <string>
#include <vector>

#include "tests/support/screen/user.h"

/// The user in front of the program's screen, over an X connection of the test's own.
class User : public screen::User {
 public:
  /// At the display of the test; or at another one.
  explicit User(const std::string& displayName = {});
  ~User() override;

  /// Presses and releases the left button in the middle of a place, or at its left edge where the
  /// rest may be covered.
  void click(const screen::ScreenArea& place);
  void clickLeft(const screen::ScreenArea& place);
  /// Where the innermost windows of `window` are that can be seen, line by line.
  std::vector<screen::ScreenArea> fields(Window window) const;

  /// Gives a window the focus, where no window manager does so.
  void giveFocus(const std::string& title);
  /// Makes a window an icon.
  void iconify(Window window);
  void resize(Window window, int width, int height);

  /// Selects all of the text in the largest text area of `window` by clicks, waits until it is
  /// `text` and leaves it selected. The keyboard goes to that area from then on.
  void expectText(Window window, const std::string& text, SourceLine where = SourceLine::current());

 private:
  /// Empty when nothing is selected by that.
  std::string selectAll(Window area);

  Window textArea = 0;
};
