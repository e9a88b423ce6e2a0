#pragma once

#include "framework/layout/sizers.h"
#include "tests/ui/support/ui_test.h"
#include "textarea/command_queue.h"
#include "textarea/my_pane.h"
#include "textarea/text_pane.h"

/// The middle of the main window in a frame of its own, the keyboard on the command line and the
/// pointer off the frame.
class TextAreaTest : public testing::Test {
 protected:
  TextAreaTest() {
    ui::bringUp(frame);
    movePointerAway();
    ui::focus(*theCommandLine);
  }

  void movePointerAway() { ui::moveTo(frame.widget(), -60, -60); }

  /// Lines "line 0" to the last one.
  static void appendLines(int count) {
    std::string lines;
    for (int i = 0; i < count; ++i) {
      lines += "line " + std::to_string(i) + "\n";
    }
    theTextPane->appendText(lines.c_str());
  }

  static std::string logText() { return theTextPane->text().str(); }
  static std::string selected() { return theTextPane->selection().str(); }
  static std::string entry() { return theCommandLine->text().str(); }
  static Widget log() { return theTextPane->widget(); }

  zAppFrame frame{nullptr, new zSizer(100, 100, 600, 360), 0xCF0000, "Text area"};
  MyPane pane{&frame, new zGravSizer(kGravityFill, zDimension{}, frame.sizer())};
};
