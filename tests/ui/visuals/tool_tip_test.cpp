// Tool tips: when they come, where, and what makes them go.

#include "framework/visuals/tool_tip.h"

#include "tests/ui/visuals/visuals_test.h"

namespace {

constexpr int kOtherId = 1904;
constexpr zToolTipText kTips[] = {{1903, "T"}, {kOtherId, "T\n\nTT"}, {0, nullptr}};

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
    showFrame();
  }
  ~ToolTip() override { zToolTipCtrl::setDelays({}); }

  void enter(const zWindow* window, int x = 5) {
    ui::moveTo(window->widget(), x, 5);
    ui::drain();
  }
  void leave() { enter(bar, 200); }
  bool isGone() const { return tips->shownTip() == nullptr; }
  /// Waits for the tip of a button, and returns its place.
  ui::ScreenArea tipOf(const zToolButton* button) {
    enter(button);
    const RWCString text = button == other ? "T\n\nTT" : "T";
    ui::waitFor(
        [&] {
          return !isGone() && tips->shownTip()->tipText() == text &&
                 ui::isViewable(tips->tipShell());
        },
        "the tip");
    ui::drain();
    return ui::areaOf(tips->tipShell());
  }
  void waitForEnd() {
    ui::waitFor([&] { return isGone(); }, "the tip's end");
  }
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
  enter(tool);
  leave();
  EXPECT_TRUE(staysGone()) << "left before the delay";
  tool->disable();  // a greyed button has its tip
  enter(tool);
  EXPECT_TRUE(isGone()) << "not before its delay";
  const ui::ScreenArea button = ui::areaOf(tool->widget());
  const ui::ScreenArea tip = tipOf(tool);
  EXPECT_EQ(tip.x, button.x + 5 + 3);
  EXPECT_EQ(tip.y, button.y + 5 + 16);
  EXPECT_TRUE(ui::hasInputFocus(ui::windowOf(frame.shell()))) << "the focus stays";
  EXPECT_NE(picture(*tips->shownTip(), {0, 0, tip.width, tip.height}).find('#'), std::string::npos);
  // The next one comes at once, and its lines are like the first.
  zToolTipCtrl::setDelays({4000, 5500});
  const ui::ScreenArea lines = tipOf(other);
  EXPECT_EQ(lines.height - 4, 3 * (tip.height - 4));
  EXPECT_EQ(lines.width - 12, 2 * (tip.width - 12));
  const int third = lines.height - tip.height + 2;
  EXPECT_NE(picture(*tips->shownTip(), {6, third, lines.width - 6, lines.height - 2}).find('#'),
            std::string::npos);
  const Window window = ui::windowOf(tips->tipShell());
  enter(without);
  EXPECT_TRUE(isGone());
  EXPECT_FALSE(ui::isViewable(window));
  zToolTipCtrl::setDelays({10, 5500});
  tips->setEnabled(false);
  enter(tool);
  EXPECT_TRUE(staysGone());
}

TEST_F(ToolTip, EndsWithItsTimeOrAPressThatStillWorksAndWhenItsWindowHidesOrDies) {
  zToolTipCtrl::setDelays({10, 200});
  tipOf(tool);
  waitForEnd();
  enter(tool, 8);
  EXPECT_TRUE(staysGone()) << "until the pointer was elsewhere";
  zToolTipCtrl::setDelays({10, 5500});
  tipOf(other);
  tipOf(tool);
  ui::pressButton();
  ui::waitFor([&] { return isGone() && tool->visualState() == kVisualHeld; }, "the press");
  ui::releaseButton();
  ui::waitFor([&] { return frame.commands == 1; }, "the command");
  enter(tool, 8);
  EXPECT_TRUE(staysGone());
  tipOf(other);
  bar->show(kShowHide);
  waitForEnd();
  bar->show();
  ui::drain();
  tipOf(other);
  delete other;
  waitForEnd();
  tipOf(tool);
  const Window window = ui::windowOf(tips->tipShell());
  tips.reset();
  ui::waitFor([&] { return !ui::isViewable(window); }, "the tip to go with its control");
}

}  // namespace
