#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "framework/draw/xtfwd.h"
#include "tests/support/screen/screen.h"

/// Looks at the windows of a screen as a user does: by what they show. It has a connection of its
/// own, so that looking does not count as work of the program looked at.
class Watcher : public screen::Screen {
 public:
  using Clock = std::chrono::steady_clock;
  /// Lets so much time pass, doing meanwhile what the program looked at needs to go on.
  using Pause = std::function<void(std::chrono::milliseconds)>;

  /// Throws std::runtime_error when there is no display.
  Watcher();
  ~Watcher() override;

  /// The first viewable window whose title begins with `title`; 0 when there is none.
  Window find(std::string_view title) const;

  /// The window at or inside `window` with no windows inside of which most is seen: where most of
  /// the program's text is.
  Window largestInside(Window window) const;

  /// The moment at which the window showed what it then went on showing, more than one colour of
  /// it, for longer than a short while. Throws when that does not come in `patience`.
  Clock::time_point awaitStill(Window window, const Pause& pause,
                               std::chrono::seconds patience) const;

 private:
  struct Part {
    Window window = 0;
    long pixels = 0;  ///< how much of it is seen
  };
  Part largest(Window window, const screen::ScreenArea& seen) const;
  Window findBelow(Window parent, std::string_view title, int depth) const;
};

/// How often the watcher looks.
inline constexpr std::chrono::milliseconds kLookEvery{3};
