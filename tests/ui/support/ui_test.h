#pragma once

#include <gmock/gmock.h>  // before the headers of X

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/core/frame.h"
#include "framework/draw/xtfwd.h"
#include "tests/support/screen/user.h"

#include <X11/keysym.h>

/// Everything for in-process tests of the user interface. Link nel_ui_support, which brings its own
/// main(): it opens the one display connection of the process before the first test.
///
/// Input goes through the X server as a user's would. After each piece of input all events are
/// handled; what the window manager or a timer has a part in is awaited with waitFor. X protocol
/// errors fail the running test.
namespace ui {

using screen::KeySymbol;
using screen::MouseButton;
using screen::ScreenArea;
using enum screen::Modifiers;
using enum screen::MouseButton;

/// The process's one connection and its application context.
Display* display();
XtAppContext context();
/// The user in front of the test: he lets the event loop run while he waits.
screen::User& user();

/// Handles all X events that are there, those included that earlier requests of this process
/// cause. Timers and work procedures stay where they are.
void drain();

/// Handles events, timers and work procedures until `condition` holds. Fails the test and ends it
/// when that takes too long; the failure names `what`.
inline void waitFor(const std::function<bool()>& condition, std::string what,
                    SourceLine where = SourceLine::current()) {
  user().waitFor(condition, std::move(what), where);
}

/// The X window of a widget; of a gadget, its parent's. 0 while it is not realized.
Window windowOf(Widget widget);

/// Where a window, widget or gadget is on the screen, without its border.
struct Place : ScreenArea {
  Place(Window window) : ScreenArea(user().areaOf(window)) {}
  Place(Widget widget);
};
inline ScreenArea areaOf(const Place& place) {
  return place;
}

/// Shows a frame and waits until it is on the screen and has the keyboard.
void bringUp(zFrameWin& frame, SourceLine where = SourceLine::current());

/// Whether the window and all around it are mapped.
inline bool isViewable(Window window) {
  return user().isViewable(window);
}
bool isViewable(Widget widget);

// Keyboard.

/// Presses and releases a key of the keyboard; it goes where the focus is.
inline void pressKey(KeySymbol symbol, unsigned modifiers = kNoModifier) {
  user().press(symbol, modifiers);
}
/// Types text, Latin-1, a key a character; a line feed is the Return key, a tab the Tab key.
inline void typeText(std::string_view text) {
  user().type(text);
}
/// Whether keys go to this widget: its shell has the server's focus and it has its shell's.
bool focusIs(Widget widget);
void waitForFocus(Widget widget, SourceLine where = SourceLine::current());
/// Gives it the focus and waits until it has it.
void focus(zWindow& window, SourceLine where = SourceLine::current());

// Mouse. Positions are pixels from the upper left corner of a place.

inline void moveTo(const Place& place, int x, int y) {
  user().moveTo(place.x + x, place.y + y);
}
inline void pressButton(MouseButton button = kLeftButton) {
  user().button(button, true);
}
inline void releaseButton(MouseButton button = kLeftButton) {
  user().button(button, false);
}
/// Moves there, presses and releases. Without a position, in the middle.
void click(const Place& place, int x, int y, MouseButton button = kLeftButton);
void click(const Place& place, MouseButton button = kLeftButton);

// Windows by their titles, whoever owns them.

inline Window windowWithTitle(const std::string& title) {
  return user().windowWithTitle(title);
}
inline bool hasInputFocus(Window window) {
  return user().hasInputFocus(window);
}
/// Waits until the window with this title is viewable and has the focus, and returns it.
inline Window waitForDialog(const std::string& title, SourceLine where = SourceLine::current()) {
  return user().awaitWindow(title, 0, where);
}
/// Asks for a window's end as the window manager's menu does.
inline void closeByWindowManager(Window window) {
  user().close(window);
}

/// Fails the running test with `awaited` and ends the process: the loop that hangs cannot be left.
[[noreturn]] void endHangingTest(const std::string& awaited);

/// Calls a function again and again from whatever event loop runs. The function may run an event
/// loop itself, in which the ticking goes on; it must not delete the ticker.
class Ticker {
 public:
  Ticker(Milliseconds period, std::function<void()> tick);
  Ticker(const Ticker&) = delete;
  Ticker& operator=(const Ticker&) = delete;
  ~Ticker();

 private:
  static void fired(void* ticker, unsigned long* id);

  Milliseconds period;
  std::function<void()> tick;
  XtAppContext armedIn = nullptr;
  XtIntervalId id = 0;
};

/// What a user does while a modal call blocks the test. The steps are queued first, then run():
///
///   ui::ModalScript script;
///   script.onDialog("Korvane Select", [] { ui::typeText("17\n"); });
///   EXPECT_EQ(script.run([&] { return dialog.runModal(); }), 1);
///
/// Each step waits for its condition; a step that opens another modal loop is followed by the next
/// one in there. Steps that are left fail the test. A step that waits in vain and a call that does
/// not return after the last one end the process, since nothing leads out of their loop.
class ModalScript {
 public:
  using Condition = std::function<bool()>;
  using Action = std::function<void()>;

  /// Waits until a window with this title is viewable and has the focus and the news of that, then
  /// acts.
  ModalScript& onDialog(const std::string& title, Action action);
  /// The same, pressing a key.
  ModalScript& onDialog(const std::string& title, KeySymbol key, unsigned modifiers = kNoModifier);
  /// Waits until `condition` holds, which `what` names, then acts.
  ModalScript& when(Condition condition, const std::string& what, Action action);

  /// Calls `call` and returns its result; the steps run meanwhile.
  template <typename Call>
  auto run(Call&& call) {
    begin();
    const std::shared_ptr<void> end(nullptr, [this](void* /*none*/) { finish(); });
    return call();
  }

 private:
  struct Step {
    Condition condition;
    std::string what;
    Action action;
  };

  void begin();
  void finish();
  // No exception may cross the frames of Xt: that of a failed step ends the process.
  void tick() noexcept;

  std::vector<Step> steps;
  std::size_t next = 0;
  std::optional<Deadline> deadline;
  std::optional<Ticker> ticker;
  std::size_t baseDepth = 0;
};

/// Runs a modal call; in the dialog that it brings up the user does `action`, which must end it,
/// and then it is gone.
template <typename Call>
auto inDialog(const std::string& title, ModalScript::Action action, Call&& call) {
  ModalScript script;
  const std::shared_ptr<void> end(nullptr, [&](void* /*none*/) {
    waitFor([&] { return windowWithTitle(title) == 0; }, "the end of window \"" + title + "\"");
  });
  return script.onDialog(title, std::move(action)).run(std::forward<Call>(call));
}

/// Number `index` of a window's children of class T; null when there are not so many.
template <class T>
T* childOf(zWindow& window, int index = 0) {
  T* found = nullptr;
  zWindowDlist::Iter walk(window.children());
  while (zWindow* child = index >= 0 ? walk.next() : nullptr) {
    found = dynamic_cast<T*>(child);
    index -= found != nullptr ? 1 : 0;
  }
  return found;
}

}  // namespace ui

#include "tests/ui/support/view.h"
