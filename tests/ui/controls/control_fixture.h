#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/controls/control.h"
#include "framework/core/frame.h"
#include "tests/ui/controls/views.h"
#include "tests/ui/support/ui_test.h"

/// Notifications as the parent got them: the id of the control and the code.
using Told = std::vector<std::pair<int, int>>;
using Journal = std::vector<std::string>;

/// The parent of the controls under test; it keeps the commands that reach it.
class ControlFrame : public zAppFrame {
 public:
  static constexpr std::uint32_t kFrameStyle = 0xCF0000;
  static constexpr const char* kTitle = "Controls";

  ControlFrame() : zAppFrame(nullptr, new zSizer(60, 60, 400, 300), kFrameStyle, kTitle) {}

  int command(zEvent* event) override {
    commands.emplace_back(static_cast<int>(event->wparam), static_cast<int>(event->lparam));
    return 1;
  }
  Told commands;
};

/// Notes in a shared journal what its handler is offered, as "NAME MESSAGE PARAMETER", and does its
/// action, which may destroy anything.
class Listener : public zEvH {
 public:
  explicit Listener(Journal& shared, std::string ownName = "handler")
      : journal(shared), name(std::move(ownName)) {}

  int onEvent(zEvent* event) {
    journal.push_back(name + " " + std::to_string(event->message) + " " +
                      std::to_string(event->wparam));
    const int result = taken;
    if (action) {
      std::exchange(action, nullptr)();
    }
    return result;
  }
  static zHandler handler() { return toHandler(&Listener::onEvent); }

  int taken = 0;
  std::function<void()> action;

 private:
  Journal& journal;
  std::string name;
};

/// A frame on the screen to put controls into. The frame owns them.
class ControlTest : public testing::Test {
 protected:
  static constexpr std::uint32_t kShownTabStop = 0x50010000;

  ControlTest() : frame(std::make_unique<ControlFrame>()) {
    frame->show();
    ui::waitForDialog(ControlFrame::kTitle);
  }
  ~ControlTest() override {
    frame.reset();
    ui::waitForNoDialog(ControlFrame::kTitle);
  }

  /// The notifications since the last call.
  Told told() { return std::exchange(frame->commands, {}); }
  Journal heard() { return std::exchange(journal, {}); }

  /// Gives `control` the focus and waits for it.
  void focus(zControl& control) {
    control.setFocus();
    ui::waitForFocus(control.innerWidget() != nullptr ? control.innerWidget() : control.widget());
    ui::drain();
    told();
  }

  /// Where something is in the frame, as "X,Y WIDTHxHEIGHT".
  std::string placeOf(Widget widget) {
    const ui::ScreenArea area = ui::areaOf(widget);
    const ui::ScreenArea board = ui::areaOf(frame->widget());
    return std::to_string(area.x - board.x) + "," + std::to_string(area.y - board.y) + " " +
           std::to_string(area.width) + "x" + std::to_string(area.height);
  }

  Journal journal;
  std::unique_ptr<ControlFrame> frame;
  Listener listener{journal};
};
