#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "framework/controls/control.h"
#include "framework/core/frame.h"
#include "support/rwc_string.h"
#include "tests/ui/support/ui_test.h"

std::vector<int> numbers(Widget widget, const std::vector<const char*>& resources);

/// What a label or button shows, and the mnemonic behind "|" if it has one.
std::string labelOf(Widget label);
/// Height of that, pixels.
int labelHeight(Widget label);

/// The selected rows of a list, as the widget has it.
std::vector<int> selectedRows(Widget list);
/// Whether the whole row can be seen in the list's window.
bool isRowInView(Widget list, int row);

/// The text of a text widget with the selection in brackets and the caret as "^".
std::string textView(Widget text);

/// The texts of all rows of a list or combo box.
template <class List>
std::vector<std::string> textsOf(const List& list) {
  std::vector<std::string> texts;
  for (int row = 0; row < list.count(); ++row) {
    RWCString text;
    list.itemText(text, row);
    texts.push_back(text.str());
  }
  return texts;
}

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

  /// Where things are in the frame, each as "X,Y WIDTHxHEIGHT; ".
  std::string placesOf(std::initializer_list<Widget> widgets) {
    const ui::ScreenArea board = ui::areaOf(frame->widget());
    std::ostringstream out;
    for (Widget widget : widgets) {
      const ui::ScreenArea area = ui::areaOf(widget);
      out << area.x - board.x << "," << area.y - board.y << " " << area.width << "x" << area.height
          << "; ";
    }
    return out.str();
  }

  Journal journal;
  std::unique_ptr<ControlFrame> frame;
  Listener listener{journal};
};
