#pragma once

#include "tests/support/screen/user.h"

/// The user in front of the program's screen, over an X connection of the test's own.
class User : public screen::User {
 public:
  User();
  ~User() override;
};
