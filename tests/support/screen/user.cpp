#include "tests/support/screen/user.h"

#include <memory>

#include "tests/support/child_process.h"

namespace screen {

void User::waitFor(const std::function<bool()>& condition, std::string what, SourceLine where) {
  waits.push_back(std::move(what));
  const std::shared_ptr<void> wait(nullptr, [&](void* /*none*/) { waits.pop_back(); });
  const Deadline deadline(patience);
  for (settle(); !condition(); settle()) {
    if (deadline.hasPassed()) {
      failScript("awaited in vain: " + waits.back(), where);
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

void User::pause() {
  ::usleep(5000);
}

}  // namespace screen
