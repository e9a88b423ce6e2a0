#include "tests/ui/visuals/visuals_test.h"

#include "framework/draw/displays.h"
#include "framework/visuals/bevel.h"
#include "tests/ui/draw/picture.h"

#include <X11/Xlib.h>

VisualsTest::VisualsTest()
    : bar(new zToolbar(&frame, new zGravSizer(kGravityTop, 16, frame.sizer()), 25, nullptr)),
      tool(addTool(2, 0, kToolId, 1)) {
  bar->show();
}

zToolButton* VisualsTest::addTool(int x, int style, int id, int images) {
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

void VisualsTest::showFrame() {
  ui::moveTo(DefaultRootWindow(ui::display()), 0, 0);
  frame.show();
  ui::waitForDialog("Visuals");
  ui::waitFor([&] { return tool->display()->isReady(); }, "the first paint of the button");
  ui::drain();
}

std::string VisualsTest::picture(const zWindow& window, zRect area) {
  if (area.isZero()) {
    const ui::ScreenArea all = ui::areaOf(window.widget());
    area = {0, 0, all.width, all.height};
  }
  return pictureOf(ui::display(), ui::windowOf(window.widget()), area);
}
