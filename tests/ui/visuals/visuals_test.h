#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>

#include "framework/core/frame.h"
#include "framework/draw/pictures.h"
#include "framework/layout/sizers.h"
#include "framework/visuals/toolbar.h"
#include "tests/ui/support/ui_test.h"

/// A frame that counts the commands that reach it, with a bar of one button of 12 by 11 pixels.
class VisualsTest : public testing::Test {
 protected:
  class Frame : public zAppFrame {
   public:
    Frame() : zAppFrame(nullptr, new zSizer(60, 60, 400, 200), 0xCF0000, "Visuals") {}
    int command(zEvent* event) override {
      commands += event->wparam == kToolId ? 1 : 100;
      onCommand();
      return 1;
    }

    int commands = 0;
    std::function<void()> onCommand = [] {};
  };

  static constexpr int kToolId = 1903;

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
