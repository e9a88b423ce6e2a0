#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "framework/core/frame.h"
#include "framework/draw/pictures.h"
#include "framework/layout/sizers.h"
#include "framework/visuals/toolbar.h"
#include "tests/ui/support/ui_test.h"

/// A frame that notes the commands that reach it, with a bar of one button of 12 by 11 pixels.
class VisualsTest : public testing::Test {
 protected:
  class Frame : public zAppFrame {
   public:
    Frame() : zAppFrame(nullptr, new zSizer(60, 60, 400, 200), 0xCF0000, "Visuals") {}
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

  static constexpr int kToolId = 1903;
  static constexpr zDimension kToolSize{12, 11};

  VisualsTest();

  /// A button on the bar at `x`, which shows `images` images of 4 by 3 pixels: a blue ring, a blue
  /// block, a red block.
  zToolButton* addTool(int x, int style, int id, int images);
  /// Shows the frame, with the pointer away from it, and waits until all is painted.
  void showFrame();
  /// What the screen shows of a window; see pictureOf. Without an area, all of it.
  static std::string picture(const zWindow& window, zRect area = {});

  Frame frame;
  zToolbar* bar;
  zToolButton* tool;
};
