// The steps run from a timer, which fires in whatever loop the modal call runs. A step counts as
// done before it acts, since its action may open the loop in which the next step is due. While an
// action waits by waitFor, the next step stays back.

#include "tests/ui/support/modal_script.h"

#include <gtest/gtest.h>

#include <exception>
#include <utility>

#include "tests/ui/support/watchdog.h"
#include "tests/ui/support/windows.h"

#include <X11/keysym.h>

namespace ui {

namespace {

constexpr Milliseconds kTick{10};

}  // namespace

ModalScript::ModalScript(SourceLine line) : where(line), deadline(kWaitTime) {}

ModalScript& ModalScript::onDialog(const std::string& title, Action action) {
  return when([title] { return hasInputFocus(windowWithTitle(title)); },
              "a window \"" + title + "\" with the focus", std::move(action));
}

ModalScript& ModalScript::onDialog(const std::string& title, KeySymbol key, unsigned modifiers) {
  return onDialog(title, [key, modifiers] { pressKey(key, modifiers); });
}

ModalScript& ModalScript::when(Condition condition, const std::string& what, Action action) {
  steps.push_back({std::move(condition), what, std::move(action)});
  return *this;
}

ModalScript::Running::Running(ModalScript& owner)
    : script(owner), ticker(kTick, [&owner] { owner.tick(); }) {
  script.baseDepth = waitDepth();
  script.restartClock();
}

ModalScript::Running::~Running() {
  if (script.next < script.steps.size() && !script.hasFailed) {
    script.giveUp("the modal call returned before there was " + script.awaited());
  }
}

void ModalScript::tick() {
  if (waitDepth() > baseDepth) {
    return;
  }
  if (hasFailed) {
    tryToGetOut();
  } else if (next < steps.size() && steps[next].condition()) {
    restartClock();
    act(steps[next++]);
  } else if (deadline.hasPassed()) {
    giveUp("awaited in vain in a modal call: " + awaited());
  }
}

void ModalScript::act(const Step& step) {
  // No exception may cross the frames of Xt.
  try {
    step.action();
  } catch (const testing::AssertionException&) {
    hasFailed = true;
  } catch (const std::exception& error) {
    giveUp(std::string("exception: ") + error.what());
  }
}

void ModalScript::restartClock() {
  deadline = Deadline(kWaitTime);
}

void ModalScript::giveUp(const std::string& reason) {
  hasFailed = true;
  restartClock();
  ADD_FAILURE_AT(where.file, where.line) << reason;
}

void ModalScript::tryToGetOut() {
  if (deadline.hasPassed()) {
    endHangingTest("  the end of the modal call\n" + Awaiting::describe());
  }
  pressKey(XK_Escape);
  closeByWindowManager(inputFocus());
}

std::string ModalScript::awaited() const {
  if (next < steps.size()) {
    return steps[next].what;
  }
  const std::string last = steps.empty() ? "" : " after the step on " + steps.back().what;
  return "the call's end" + last;
}

}  // namespace ui
