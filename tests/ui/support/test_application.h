#pragma once

#include "framework/draw/xtfwd.h"

namespace ui {

/// Makes the application object, which opens the display. Called by main() once.
void makeTestApplication(int argc, char** argv);

/// The process's one connection and its application context.
Display* display();
XtAppContext context();

/// X protocol errors fail the running test, except while one of these lives: for tests that
/// provoke one, and for looking at windows that may be gone.
class IgnoreXErrors {
 public:
  IgnoreXErrors();
  IgnoreXErrors(const IgnoreXErrors&) = delete;
  IgnoreXErrors& operator=(const IgnoreXErrors&) = delete;
  /// Waits for the errors of what was requested so far.
  ~IgnoreXErrors();
};

}  // namespace ui
