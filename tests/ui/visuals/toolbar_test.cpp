// Toolbars and their buttons: input in, pictures and commands out.

#include "tests/ui/visuals/visuals_test.h"

namespace {

class Toolbar : public VisualsTest {
 protected:
  Toolbar() { showFrame(); }
  void pressTool() {
    ui::moveTo(tool->widget(), 6, 5);
    ui::pressButton();
    // The press may come by way of the window manager.
    ui::waitFor([&] { return tool->visualState() == kVisualHeld; }, "the press");
  }
  void moveAway() { ui::moveTo(bar->widget(), 150, 3); }
  void clickTool() {
    pressTool();
    ui::releaseButton();
    ui::drain();
  }
};

TEST_F(Toolbar, ABarHasLinesAndButtonsThatLookByTheirStyleAndState) {
  // Up, held and grey: a plain one, and one with a frame and an image for each of its states.
  std::vector<zToolButton*> buttons = {tool};
  for (int x = 14; x < 74; x += 12) {
    buttons.push_back(
        addTool(x, x < 38 ? 0 : kBmpDefaultFrame | kBmpImageUpDownDisabled, 1, x < 38 ? 1 : 3));
  }
  ui::waitFor([&] { return buttons.back()->display()->isReady(); }, "the last button's paint");
  XEvent x = {};
  x.xbutton.type = ButtonPress;
  x.xbutton.button = Button1;
  zEvent press;
  press.xevent = &x;
  for (const std::size_t i : {1U, 4U}) {
    buttons[i]->mouseButtonDown(&press);
    buttons[i + 1]->disable();
  }
  ui::drain();
  EXPECT_EQ(picture(*bar, {0, 0, 76, 16}), R"(
############################################################################
............................................................................
..########################################################################..
..#wwwwwwwwwd##dddddddddw##wwwwwwwwwd#####################################..
..#w........d##d........w##w........d###wwwwwwwd####dddddddw####wwwwwwwd##..
..#w........d##d........w##w........d###w......d####d......w####w......d##..
..#w..bbbb..d##d........w##w..dddd..d###w.bbbb.d####d......w####w.rrrr.d##..
..#w..b..b..d##d...bbbb.w##w..dwwd..d###w.b..b.d####d..bbbbw####w.rrrr.d##..
..#w..bbbb..d##d...b..b.w##w..dddd..d###w.bbbb.d####d..bbbbw####w.rrrr.d##..
..#w........d##d...bbbb.w##w........d###w......d####d..bbbbw####w......d##..
..#w........d##d........w##w........d###dddddddd####wwwwwwww####dddddddd##..
..#dddddddddd##wwwwwwwwww##dddddddddd#####################################..
..########################################################################..
............................................................................
............................................................................
############################################################################
)");
}

TEST_F(Toolbar, AButtonIsPressedReleasedAndLeftByTheMouse) {
  const std::string up = picture(*tool);
  pressTool();
  const std::string held = picture(*tool);
  tool->invalidate(nullptr, 1);
  ui::drain();
  EXPECT_EQ(picture(*tool), held) << "painted anew";
  ui::releaseButton();
  // How the button looks, and the number of commands.
  const auto lookNow = [&] {
    ui::drain();
    const std::string look = picture(*tool);
    return (look == up ? "up " : look == held ? "held " : "? ") + std::to_string(frame.commands);
  };
  EXPECT_EQ(lookNow(), "up 1");
  // Left while it is held it comes up; the click is given up unless the pointer comes back.
  pressTool();
  moveAway();
  EXPECT_EQ(lookNow(), "up 1");
  ui::moveTo(tool->widget(), 3, 3);
  EXPECT_EQ(lookNow(), "held 1");
  moveAway();
  ui::releaseButton();
  ui::click(tool->widget(), ui::kRightButton);
  EXPECT_EQ(lookNow(), "up 1");
  // A disabled one is deaf, also when its own command or somebody disabled it.
  pressTool();
  tool->disable();
  ui::releaseButton();
  ui::click(tool->widget());
  tool->enable();
  EXPECT_EQ(lookNow(), "up 1");
  frame.onCommand = [this] { tool->disable(); };
  clickTool();
  EXPECT_EQ(lookNow(), "? 2");
  EXPECT_EQ(tool->visualState(), kVisualDisabled);
}

TEST_F(Toolbar, ACommandLeavesTheFocusAndMayDestroyTheBar) {
  auto* pane = new zPane(&frame, new zGravSizer(kGravityFill, 0, frame.sizer()), kStyleTabStop, 1);
  pane->show();
  frame.sizer()->update(nullptr);
  ui::focus(*pane);
  clickTool();
  ui::click(bar->widget(), 150, 8);  // where nothing is
  EXPECT_EQ(frame.commands, 1);
  EXPECT_TRUE(ui::focusIs(pane->widget()));
  frame.onCommand = [this] { delete bar; };
  const Window window = ui::windowOf(bar->widget());
  ui::click(tool->widget());
  ui::waitFor([&] { return !ui::isViewable(window); }, "the bar to disappear");
  EXPECT_EQ(frame.commands, 2);
}

}  // namespace
