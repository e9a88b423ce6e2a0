#pragma once

#include "framework/draw/displays.h"
#include "framework/draw/pictures.h"
#include "framework/layout/sizers.h"
#include "framework/visuals/bevel.h"
#include "framework/visuals/toolbar.h"
#include "tests/ui/draw/picture.h"

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

  VisualsTest()
      : bar(new zToolbar(&frame, new zGravSizer(kGravityTop, 16, frame.sizer()), 25, nullptr)),
        tool(addTool(2, 0, kToolId, 1)) {
    bar->show();
  }

  /// A button on the bar at `x`, which shows `images` images of 4 by 3 pixels: a blue ring, a blue
  /// block, a red block.
  zToolButton* addTool(int x, int style, int id, int images) {
    auto* image = new zBitmap(4 * images, 3);
    zBitmapDisplay canvas(*image);
    canvas.lock();
    fillArea(canvas, {0, 0, 8, 3}, zColor(0x0000FF));
    fillArea(canvas, {1, 1, 3, 2}, kFaceColour);
    fillArea(canvas, {8, 0, 12, 3}, zColor(0xFF0000));
    auto* button = new zToolButton(bar, new zSizer(zPoint{x, 2}, zDimension{12, 11}, bar->sizer()),
                                   style, id, image);
    button->show();
    return button;
  }
  /// Shows the frame, with the pointer away from it, and waits until all is painted.
  void showFrame() {
    ui::moveTo(DefaultRootWindow(ui::display()), 0, 0);
    ui::bringUp(frame);
    ui::waitFor([&] { return tool->display()->isReady(); }, "the first paint of the button");
  }
  /// What the screen shows of a window; see pictureOf. Without an area, that of a button.
  static std::string picture(const zWindow& window, const zRect& area = {0, 0, 12, 11}) {
    return pictureOf(ui::windowOf(window.widget()), area);
  }

  Frame frame;
  zToolbar* bar;
  zToolButton* tool;
};
