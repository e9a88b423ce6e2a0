#include "tests/support/screen/user.h"

#include "tests/support/child_process.h"

namespace screen {

void User::waitFor(const std::function<bool()>& condition, std::string what, SourceLine where) {
  struct Wait {
    explicit Wait(std::vector<std::string>& all) : waits(all) {}
    Wait(const Wait&) = delete;
    Wait& operator=(const Wait&) = delete;
    ~Wait() { waits.pop_back(); }
    std::vector<std::string>& waits;
  };
  waits.push_back(std::move(what));
  const Wait wait(waits);
  const Deadline deadline(patience);
  for (settle(); !condition(); settle()) {
    if (deadline.hasPassed()) {
      std::string text = "awaited in vain:";
      for (const std::string& awaited : waits) {
        text += "\n  " + awaited;
      }
      failScript(text, where);
    }
    pause();
  }
}

Window User::awaitWindow(const std::string& title, Window known, SourceLine where) {
  Window window = 0;
  const auto isReady = [&] {
    window = windowWithTitle(title);
    return window != known && hasInputFocus(window);
  };
  waitFor(isReady, "a window \"" + title + "\" with the focus", where);
  return window;
}

void User::awaitGone(Window window, SourceLine where) {
  waitFor([&] { return !isViewable(window); }, "a window to go", where);
}

void User::awaitMenu(SourceLine where) {
  waitFor([&] { return hasPopup(); }, "a menu", where);
}

void User::awaitNoMenu(SourceLine where) {
  waitFor([&] { return !hasPopup(); }, "the menu to go", where);
}

void User::pause() {
  ::usleep(5000);
}

}  // namespace screen
