#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/support/basics.h"
#include "tests/support/screen/screen.h"

namespace screen {

/// A user who waits for what is to come about. What does not in time fails the test and ends it.
class User : public Screen {
 public:
  explicit User(Display* opened, Milliseconds hisPatience = kAnswerTime)
      : Screen(opened), patience(hisPatience) {}

  /// Lets time pass until `condition` holds; the failure names `what`.
  void waitFor(const std::function<bool()>& condition, std::string what,
               SourceLine where = SourceLine::current());
  /// Waits until a window with this title, other than `known`, is viewable and has the focus.
  Window awaitWindow(const std::string& title, Window known = 0,
                     SourceLine where = SourceLine::current());
  void awaitGone(Window window, SourceLine where = SourceLine::current()) {
    waitFor([&] { return !isViewable(window); }, "a window to go", where);
  }
  /// Waits until the window manager, if it can be asked, has handled all that has happened.
  void awaitWindowManager() {
    if (const Window question = askWindowManager(); question != 0) {
      waitFor([&] { return hasAnswered(question); }, "the window manager");
    }
  }
  /// Waits until a menu is on the screen.
  void awaitMenu() {
    waitFor([&] { return hasPopup(); }, "a menu");
  }

  /// What is waited for at present, the innermost last.
  const std::vector<std::string>& awaited() const { return waits; }

 protected:
  /// Called between looks.
  virtual void pause();

 private:
  Milliseconds patience;
  std::vector<std::string> waits;
};

}  // namespace screen
