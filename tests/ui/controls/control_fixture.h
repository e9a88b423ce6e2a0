#pragma once

#include <sstream>

#include "framework/controls/button.h"
#include "resources/styles.h"
#include "tests/ui/support/ui_test.h"

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

/// A frame on the screen for controls, which it owns if they are not gone before. The focus is at a
/// button of its own.
class ControlTest : public testing::Test {
 protected:
  ControlTest() {
    ui::bringUp(frame);
    // Until the window manager has made the window the active one, it keeps clicks for itself.
    ui::click(elsewhere->widget());
    ui::waitFor([&] { return heard() == "0:0 "; }, "a click that comes through");
  }

  static zSizer* place(int y = 10, int height = 40) { return new zSizer(10, y, 200, height); }
  /// The journal since the last call.
  std::string heard() {
    ui::drain();
    return std::exchange(frame.journal, {});
  }
  /// Where widgets are in the frame, each as "X,Y WIDTHxHEIGHT; ".
  std::string placesOf(std::initializer_list<Widget> widgets) {
    ui::drain();
    const ui::ScreenArea board = ui::areaOf(frame.widget());
    std::string places;
    for (Widget widget : widgets) {
      const ui::ScreenArea at = ui::areaOf(widget);
      places += ui::placeView({at.x - board.x, at.y - board.y, at.width, at.height}) + "; ";
    }
    return places;
  }
  /// All rows of a list, and the selected ones in view: "alpha beta ".
  static std::string rowsIn(Widget list) {
    std::string all;
    for (const std::string& row : ui::rowsOf(list)) {
      all += row + " ";
    }
    return all;
  }
  static std::string chosenIn(Widget list) {
    std::istringstream rows(ui::look(list));
    std::string chosen;
    for (std::string row; std::getline(rows, row);) {
      chosen += row.starts_with("|*") ? row.substr(2) + " " : "";
    }
    return chosen;
  }

  ControlFrame frame;
  zControl* elsewhere =
      new zPushButton(&frame, new zSizer(380, 0, 20, 20), kStyleControlStop, "", 0);
};
