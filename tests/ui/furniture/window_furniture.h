#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "framework/core/frame.h"
#include "framework/draw/displays.h"
#include "framework/draw/pictures.h"
#include "framework/layout/sizers.h"
#include "framework/visuals/toolbar.h"
#include "tests/ui/support/ui_test.h"

/// A frame that notes the commands that reach it, with a toolbar at the top.
class FurnitureFrame : public zAppFrame {
 public:
  static constexpr std::uint32_t kFrameStyle = 0xCF0000;
  static constexpr const char* kTitle = "Furniture";

  FurnitureFrame() : zAppFrame(nullptr, new zSizer(60, 60, 400, 200), kFrameStyle, kTitle) {}

  int command(zEvent* event) override {
    commands.push_back(static_cast<int>(event->wparam));
    if (onCommand) {
      onCommand();
    }
    return 1;
  }

  std::vector<int> commands;
  std::function<void()> onCommand;
};

/// A toolbar with one button of 24 by 22 pixels, whose image is a blue square on grey.
class FurnitureTest : public testing::Test {
 protected:
  static constexpr int kBarHeight = 30;
  static constexpr int kToolId = 1903;
  static constexpr int kToolBarStyle = 25;
  static constexpr zColor kBlue{0x0000FF};
  static constexpr zPoint kQuietPlace = {200, 130};
  static zRect toolPlace() { return {zPoint{5, 4}, zDimension{24, 22}}; }

  FurnitureTest()
      : bar(new zToolbar(&frame, new zGravSizer(kGravityTop, kBarHeight, frame.sizer()),
                         kToolBarStyle, nullptr)),
        tool(new zToolButton(bar, new zSizer(toolPlace().pos(), toolPlace().size(), bar->sizer()),
                             0, kToolId, blueSquare())) {
    tool->show();
    bar->show();
  }

  /// Shows the frame, with the pointer away from its furniture.
  void showFrame() {
    ui::moveTo(rootWindow(), 0, 0);
    frame.show();
    ui::waitForDialog(FurnitureFrame::kTitle);
    ui::waitFor([&] { return tool->display()->isReady(); }, "the first paint of the button");
    ui::drain();
  }
  static zBitmap* blueSquare();
  static Window rootWindow();
  /// What the screen shows at a place of a window.
  static std::uint32_t pixel(zDisplay* display, int x, int y) {
    zColor colour;
    display->lock();
    display->getPixel(x, y, colour);
    display->unlock();
    return colour.rgb();
  }
  std::uint32_t toolPixel(int x, int y) { return pixel(tool->display(), x, y); }

  FurnitureFrame frame;
  zToolbar* bar;
  zToolButton* tool;
};
