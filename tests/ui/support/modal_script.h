#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/support/source_line.h"
#include "tests/ui/support/input.h"
#include "tests/ui/support/ticker.h"
#include "tests/ui/support/wait.h"

namespace ui {

/// What a user does while a modal call blocks the test. The steps are queued first, then run():
///
///   ui::ModalScript script;
///   script.onDialog("Korvane Select", [] { ui::typeText("17\n"); });
///   EXPECT_EQ(script.run([&] { return dialog.runModal(); }), 1);
///
/// Each step waits for its condition; a step that opens another modal loop is followed by the next
/// one in there. A step that waits in vain, steps that are left and a call that does not return
/// after the last one fail the test, and the script then tries to get out of the dialog.
class ModalScript {
 public:
  using Condition = std::function<bool()>;
  using Action = std::function<void()>;

  explicit ModalScript(SourceLine line = SourceLine::current());

  /// Waits until a window with this title is viewable and has the focus, then acts.
  ModalScript& onDialog(const std::string& title, Action action);
  /// The same, pressing a key.
  ModalScript& onDialog(const std::string& title, KeySymbol key, unsigned modifiers = kNoModifier);
  /// Waits until `condition` holds, which `what` names, then acts.
  ModalScript& when(Condition condition, const std::string& what, Action action);

  /// Calls `call` and returns its result; the steps run meanwhile.
  template <typename Call>
  auto run(Call&& call) {
    const Running running(*this);
    return call();
  }

 private:
  struct Step {
    Condition condition;
    std::string what;
    Action action;
  };

  class Running {
   public:
    explicit Running(ModalScript& script);
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running();

   private:
    ModalScript& script;
    Ticker ticker;
  };

  void tick();
  void act(const Step& step);
  void restartClock();
  void giveUp(const std::string& reason);
  void tryToGetOut();
  std::string awaited() const;

  SourceLine where;
  std::vector<Step> steps;
  std::size_t next = 0;
  Deadline deadline;
  int baseDepth = 0;
  bool hasFailed = false;
};

}  // namespace ui
