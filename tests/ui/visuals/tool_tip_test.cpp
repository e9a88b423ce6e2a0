// Tool tips: when they come, where, how they look, and what makes them go.

#include "framework/visuals/tool_tip.h"

#include "framework/draw/screen.h"
#include "tests/ui/visuals/visuals_test.h"

namespace {

constexpr int kOtherId = 1904;
constexpr zToolTipText kTips[] = {{1903, "Zoom"}, {kOtherId, "Zoom\n\nZoom"}, {0, nullptr}};

class ToolTip : public VisualsTest {
 protected:
  ToolTip()
      : other(addTool(40, 0, kOtherId, 1)),
        without(addTool(60, 0, 77, 1)),
        tips(std::make_unique<zToolTipCtrl>(&frame)) {
    tips->setTable(kTips);
    for (zToolButton* button : {tool, other, without}) {
      tips->add(button);
    }
    zToolTipCtrl::setDelays({10, 5500});
  }
  ~ToolTip() override { zToolTipCtrl::setDelays({}); }

  void enter(const zToolButton* button, int x = 5) {
    ui::moveTo(button->widget(), x, 5);
    ui::drain();
  }
  void leave() {
    ui::moveTo(frame.widget(), 200, 130);
    ui::drain();
  }
  void waitForTip(const char* text) {
    ui::waitFor([&] { return shows(text) && ui::isViewable(tips->tipShell()); }, "the tip");
    ui::drain();
  }
  void waitForEnd() {
    ui::waitFor([&] { return isGone(); }, "the tip's end");
  }
  bool shows(const char* text) const {
    return tips->shownTip() != nullptr && tips->shownTip()->tipText() == RWCString(text);
  }
  bool isGone() const { return tips->shownTip() == nullptr; }
  /// Whether no tip comes while several delays pass.
  bool staysGone() {
    int passed = 0;
    const ui::Ticker ticker(Milliseconds(15), [&passed] { ++passed; });
    ui::waitFor([&] { return passed == 4 || !isGone(); }, "the delay to pass");
    return isGone();
  }

  zToolButton* other;
  zToolButton* without;
  std::unique_ptr<zToolTipCtrl> tips;
};

TEST_F(ToolTip, ComesNearThePointerAndGoesWithIt) {
  showFrame();
  tool->disable();  // a greyed button has its tip
  enter(tool);
  EXPECT_TRUE(isGone()) << "not before its delay";
  waitForTip("Zoom");
  const ui::ScreenArea button = ui::areaOf(tool->widget());
  const ui::ScreenArea tip = ui::areaOf(tips->tipShell());
  EXPECT_EQ(tip.x, button.x + 5 + 3);
  EXPECT_EQ(tip.y, button.y + 5 + 16);
  const Window window = ui::windowOf(tips->tipShell());
  EXPECT_TRUE(ui::hasInputFocus(ui::windowOf(frame.shell()))) << "the focus stays";
  leave();
  EXPECT_TRUE(isGone());
  EXPECT_FALSE(ui::isViewable(window));
  tips->setEnabled(false);
  enter(tool);
  EXPECT_TRUE(staysGone());
}

TEST_F(ToolTip, FollowsToTheNextWindowAtOnceAndShowsItsLinesInAFrame) {
  showFrame();
  enter(tool);
  waitForTip("Zoom");
  const ui::ScreenArea one = ui::areaOf(tips->tipShell());
  const int lineHeight = one.height - 4;
  zToolTipCtrl::setDelays({4000, 5500});
  enter(other);
  waitForTip("Zoom\n\nZoom");
  const ui::ScreenArea three = ui::areaOf(tips->tipShell());
  EXPECT_EQ(three.width, one.width);
  EXPECT_EQ(three.height, 3 * lineHeight + 4);
  // Inside the frame the first and the third line are the same, and the second one is blank.
  const ziToolHelper& tip = *tips->shownTip();
  const auto lineAt = [&](int line) {
    return picture(tip, {1, 2 + line * lineHeight, three.width - 1, 2 + (line + 1) * lineHeight});
  };
  EXPECT_EQ(lineAt(0), lineAt(2));
  EXPECT_EQ(lineAt(1).find('#'), std::string::npos);
  EXPECT_NE(lineAt(0).find('#'), std::string::npos);
  const auto isFrame = [&](const zRect& edge) {
    return picture(tip, edge).find_first_not_of(".\n") == std::string::npos;
  };
  EXPECT_TRUE(isFrame({0, 0, three.width, 1}));
  EXPECT_TRUE(isFrame({0, three.height - 1, three.width, three.height}));
  EXPECT_TRUE(isFrame({0, 0, 1, three.height}));
  EXPECT_TRUE(isFrame({three.width - 1, 0, three.width, three.height}));
  // Text begins 6 pixels from the left, and leaves as much at the right.
  for (const zRect& margin :
       {zRect{1, 0, 6, three.height}, zRect{three.width - 6, 0, three.width, three.height}}) {
    EXPECT_EQ(picture(tip, margin).find('#'), std::string::npos);
  }
  enter(without);
  EXPECT_TRUE(isGone());
}

TEST_F(ToolTip, LeavingBeforeTheDelayLeavesNone) {
  showFrame();
  enter(tool);
  leave();
  EXPECT_TRUE(staysGone());
}

TEST_F(ToolTip, WhenItsTimeIsOverItComesBackOnlyAfterAnotherWindow) {
  zToolTipCtrl::setDelays({10, 80});
  showFrame();
  enter(tool);
  waitForTip("Zoom");
  waitForEnd();
  enter(tool, 8);
  EXPECT_TRUE(staysGone());
  zToolTipCtrl::setDelays({10, 5500});
  enter(other);
  waitForTip("Zoom\n\nZoom");
  enter(tool);
  waitForTip("Zoom");
}

TEST_F(ToolTip, APressEndsItAndTheButtonStillWorks) {
  showFrame();
  enter(tool);
  waitForTip("Zoom");
  ui::pressButton();
  ui::waitFor([&] { return isGone() && tool->visualState() == kVisualHeld; }, "the press");
  ui::releaseButton();
  ui::waitFor([&] { return frame.commands == std::vector<int>{kToolId}; }, "the command");
  enter(tool, 8);
  EXPECT_TRUE(staysGone());
}

TEST_F(ToolTip, IsNotLeftBehindWhenItsWindowHidesOrDies) {
  showFrame();
  enter(tool);
  waitForTip("Zoom");
  bar->show(kShowHide);
  waitForEnd();
  bar->show();
  ui::drain();
  enter(other);
  waitForTip("Zoom\n\nZoom");
  delete other;
  waitForEnd();
  leave();
  enter(tool);
  waitForTip("Zoom");
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
  EXPECT_EQ(tip.y + tip.height, corner.y - 3);
}

}  // namespace
