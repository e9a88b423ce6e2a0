#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

#include "framework/controls/button.h"
#include "framework/core/frame.h"
#include "resources/styles.h"
#include "tests/ui/support/ui_test.h"

/// Resources that are numbers, "2 1 ".
std::string numbers(Widget widget, std::initializer_list<const char*> resources);
/// All rows of a list, and the selected ones in view: "alpha beta ".
std::string rowsIn(Widget list);
std::string chosenIn(Widget list);
/// The text of a text widget with the selection in brackets and the caret as "^".
std::string textView(Widget text);
/// Gives a control the focus.
void focus(const zControl& control);

/// The parent of the controls under test, which notes in a journal what reaches it: a command as
/// "ID:CODE ", and what its handler is offered as "MESSAGE(PARAMETER) ".
class ControlFrame : public zAppFrame {
 public:
  ControlFrame() : zAppFrame(nullptr, new zSizer(60, 60, 400, 300), kStyleMainWindow, "Controls") {}

  int command(zEvent* event) override {
    journal += std::to_string(event->wparam) + ":" + std::to_string(event->lparam) + " ";
    return 1;
  }
  int noted(zEvent* event) {
    journal += std::to_string(event->message) + "(" + std::to_string(event->wparam) + ") ";
    const int result = taken;
    if (action) {
      std::exchange(action, nullptr)();
    }
    return result;
  }

  std::string journal;
  int taken = 0;                 ///< the result of the handler
  std::function<void()> action;  ///< what the handler does, once; it may destroy a control
};
inline const zHandler kNoted = toHandler(&ControlFrame::noted);

/// A frame on the screen to put controls into, which it owns. The focus is at a button of its own.
class ControlTest : public testing::Test {
 protected:
  ControlTest() {
    frame->show();
    ui::waitForDialog("Controls");
    focus(*elsewhere);
  }
  ~ControlTest() override {
    frame.reset();
    ui::waitForNoDialog("Controls");
  }

  /// The journal since the last call.
  std::string heard() {
    ui::drain();
    return std::exchange(frame->journal, {});
  }
  /// Where widgets are in the frame, each as "X,Y WIDTHxHEIGHT; ".
  std::string placesOf(std::initializer_list<Widget> widgets);

  std::unique_ptr<ControlFrame> frame = std::make_unique<ControlFrame>();
  const zControl* elsewhere =
      new zPushButton(frame.get(), new zSizer(380, 0, 20, 20), kStyleControlStop, "", 0);
};
