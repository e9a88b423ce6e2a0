// Tool tips: when they come, where, and what makes them go.

#include "framework/visuals/tool_tip.h"

#include "framework/draw/screen.h"
#include "tests/ui/furniture/window_furniture.h"
#include "tests/ui/support/ticker.h"

namespace {

constexpr int kOtherId = 1904;
constexpr zToolTipText kTips[] = {
    {1903, "Zoom in"}, {kOtherId, "Zoom out\nmakes the text smaller"}, {0, nullptr}};

class ToolTip : public FurnitureTest {
 protected:
  ToolTip()
      : other(new zToolButton(bar, new zSizer(zPoint{40, 4}, zDimension{24, 22}, bar->sizer()), 0,
                              kOtherId, nullptr)),
        tips(std::make_unique<zToolTipCtrl>(&frame)) {
    other->show();
    tips->setTable(kTips);
    tips->add(tool);
    tips->add(other);
    zToolTipCtrl::setDelays({10, 5500});
  }
  ~ToolTip() override { zToolTipCtrl::setDelays({}); }

  void enter(zToolButton* button) {
    ui::moveTo(button->widget(), 10, 10);
    ui::drain();
  }
  void leave() {
    ui::moveTo(frame.widget(), kQuietPlace.x, kQuietPlace.y);
    ui::drain();
  }
  void waitForTip(const char* text) {
    ui::waitFor([&] { return shows(text) && ui::isViewable(tips->tipShell()); }, "the tip");
    ui::drain();
  }
  bool shows(const char* text) const {
    return tips->shownTip() != nullptr && tips->shownTip()->tipText() == RWCString(text);
  }
  bool isGone() const { return tips->shownTip() == nullptr; }

  zToolButton* other;
  std::unique_ptr<zToolTipCtrl> tips;
};

TEST_F(ToolTip, ComesNearThePointerAndGoesWithIt) {
  showFrame();
  tool->disable();  // a greyed button has its tip
  enter(tool);
  EXPECT_TRUE(isGone()) << "not before its delay";
  waitForTip("Zoom in");
  const ui::ScreenArea button = ui::areaOf(tool->widget());
  const ui::ScreenArea tip = ui::areaOf(tips->tipShell());
  EXPECT_EQ(tip.x, button.x + 10 + 3);
  EXPECT_EQ(tip.y, button.y + 10 + 16);
  const Window window = ui::windowOf(tips->tipShell());
  EXPECT_TRUE(ui::hasInputFocus(ui::windowOf(frame.shell()))) << "the focus stays";
  leave();
  EXPECT_TRUE(isGone());
  EXPECT_FALSE(ui::isViewable(window));
}

TEST_F(ToolTip, FollowsToTheNextWindowAtOnceAndHasARoomForEachLine) {
  showFrame();
  enter(tool);
  waitForTip("Zoom in");
  const int lineHeight = ui::areaOf(tips->tipShell()).height;
  zToolTipCtrl::setDelays({4000, 5500});
  enter(other);
  EXPECT_TRUE(shows("Zoom out\nmakes the text smaller"));
  zDimension line;
  tips->shownTip()->display()->textSize(line, "M");
  EXPECT_EQ(ui::areaOf(tips->tipShell()).height, lineHeight + line.height);
}

TEST_F(ToolTip, LeavingBeforeTheDelayLeavesNone) {
  showFrame();
  enter(tool);
  leave();
  // Several delays later.
  int passed = 0;
  const ui::Ticker ticker(Milliseconds(10), [&passed] { ++passed; });
  ui::waitFor([&] { return passed == 3 || !isGone(); }, "the delay to pass");
  EXPECT_TRUE(isGone());
}

TEST_F(ToolTip, WhenItsTimeIsOverItComesBackOnlyAfterAnotherWindow) {
  zToolTipCtrl::setDelays({10, 80});
  showFrame();
  enter(tool);
  waitForTip("Zoom in");
  ui::waitFor([&] { return isGone(); }, "the tip's end");
  ui::moveTo(tool->widget(), 14, 12);
  ui::drain();
  zToolTipCtrl::setDelays({10, 5500});
  enter(other);
  waitForTip("Zoom out\nmakes the text smaller");
  enter(tool);
  waitForTip("Zoom in");
}

TEST_F(ToolTip, APressEndsItAndTheButtonStillWorks) {
  showFrame();
  enter(tool);
  waitForTip("Zoom in");
  ui::pressButton();
  ui::waitFor([&] { return isGone() && tool->visualState() == kVisualHeld; }, "the press");
  ui::releaseButton();
  ui::waitFor([&] { return frame.commands == std::vector<int>{kToolId}; }, "the command");
}

TEST_F(ToolTip, IsNotLeftBehindWhenItsWindowHidesOrDies) {
  showFrame();
  enter(tool);
  waitForTip("Zoom in");
  bar->show(kShowHide);
  ui::waitFor([&] { return isGone(); }, "the tip to go with the bar");
  bar->show();
  ui::drain();
  enter(other);
  waitForTip("Zoom out\nmakes the text smaller");
  delete other;
  ui::waitFor([&] { return isGone(); }, "the tip to go with the button");
  leave();
  enter(tool);
  waitForTip("Zoom in");
  const Window window = ui::windowOf(tips->tipShell());
  tips.reset();
  ui::waitFor([&] { return !ui::isViewable(window); }, "the tip to go with its control");
}

TEST_F(ToolTip, StaysOnTheScreenAndOffThePointer) {
  ziToolHelper helper(&frame);
  showFrame();
  const ziScreen& screen = theScreen();
  const zPoint corner{screen.screenWidth - 1, screen.screenHeight - 1};
  helper.showAt(corner, "A tip in the corner");
  ui::waitFor([&] { return ui::isViewable(helper.shell()); }, "the tip");
  const ui::ScreenArea tip = ui::areaOf(helper.shell());
  EXPECT_EQ(tip.x + tip.width, screen.screenWidth);
  EXPECT_LT(tip.y + tip.height, corner.y);
}

}  // namespace
