#pragma once

#include <string>

#include "tests/support/screen/user.h"

/// The user in front of the program's screen, over an X connection of the test's own.
class User : public screen::User {
 public:
  User();
  ~User() override;

  /// Selects all of the text area in the middle of `window`; the keyboard goes there.
  void selectAll(Window window);
  /// What is selected on the screen.
  std::string selection();
};
