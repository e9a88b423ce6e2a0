#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "framework/controls/control.h"
#include "framework/core/frame.h"
#include "tests/ui/support/ui_test.h"

/// A notification as the parent got it.
struct Notification {
  int id = 0;
  int code = 0;
  bool operator==(const Notification&) const = default;
};

/// The parent of the controls under test; it keeps the commands that reach it.
class ControlFrame : public zAppFrame {
 public:
  static constexpr std::uint32_t kFrameStyle = 0xCF0000;
  static constexpr const char* kTitle = "Controls";

  ControlFrame() : zAppFrame(nullptr, new zSizer(60, 60, 400, 300), kFrameStyle, kTitle) {}

  int command(zEvent* event) override {
    commands.push_back({static_cast<int>(event->wparam), static_cast<int>(event->lparam)});
    return 1;
  }
  /// The notifications since the last call.
  std::vector<Notification> takeCommands() { return std::exchange(commands, {}); }

 private:
  std::vector<Notification> commands;
};

/// Deletes a control from inside its own event or notification.
template <class Control>
class Executioner : public zEvH {
 public:
  explicit Executioner(Control* target = nullptr) : victim(target) {}
  static zHandler handler() { return toHandler(&Executioner::onEvent); }
  int onEvent(zEvent* /*event*/) {
    delete std::exchange(victim, nullptr);
    return 0;
  }

  Control* victim;
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

  /// Gives `control` the focus and waits for it.
  void focus(zControl& control) {
    control.setFocus();
    ui::waitForFocus(control.innerWidget() != nullptr ? control.innerWidget() : control.widget());
    ui::drain();
    frame->takeCommands();
  }

  std::unique_ptr<ControlFrame> frame;
};
