// Tool tips: when they come, where, how they look, and what makes them go.

#include "framework/visuals/tool_tip.h"

#include "framework/draw/screen.h"
#include "tests/ui/visuals/visuals_test.h"

namespace {

constexpr int kOtherId = 1904;
constexpr zToolTipText kTips[] = {{1903, "T"}, {kOtherId, "T\n\nT"}, {0, nullptr}};

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
  void waitForTip(const char* text) {
    ui::waitFor(
        [&] {
          return !isGone() && tips->shownTip()->tipText() == RWCString(text) &&
                 ui::isViewable(tips->tipShell());
        },
        "the tip");
    ui::drain();
  }
  void expectTip(const zToolButton* button, const char* text) {
    enter(button);
    waitForTip(text);
  }
  void waitForEnd() {
    ui::waitFor([&] { return isGone(); }, "the tip's end");
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
  enter(tool);
  leave();
  EXPECT_TRUE(staysGone()) << "left before the delay";
  tool->disable();  // a greyed button has its tip
  enter(tool);
  EXPECT_TRUE(isGone()) << "not before its delay";
  waitForTip("T");
  const ui::ScreenArea button = ui::areaOf(tool->widget());
  const ui::ScreenArea tip = ui::areaOf(tips->tipShell());
  EXPECT_EQ(tip.x, button.x + 5 + 3);
  EXPECT_EQ(tip.y, button.y + 5 + 16);
  EXPECT_TRUE(ui::hasInputFocus(ui::windowOf(frame.shell()))) << "the focus stays";
  const Window window = ui::windowOf(tips->tipShell());
  leave();
  EXPECT_TRUE(isGone());
  EXPECT_FALSE(ui::isViewable(window));
  tips->setEnabled(false);
  enter(tool);
  EXPECT_TRUE(staysGone());
}

TEST_F(ToolTip, FollowsToTheNextWindowAtOnceAndShowsItsLinesInAFrame) {
  expectTip(tool, "T");
  const std::string one = picture(*tips->shownTip());
  const ui::ScreenArea area = ui::areaOf(tips->tipShell());
  zToolTipCtrl::setDelays({4000, 5500});
  expectTip(other, "T\n\nT");
  // A frame, 6 pixels to the text from the left and the right; the lines are like that of the first
  // tip, the second one blank.
  const std::string rows = one.substr(1);
  const auto stride = static_cast<std::size_t>(area.width) + 1;
  const std::string line = rows.substr(2 * stride, rows.size() - 4 * stride);
  std::string blank;
  for (std::size_t i = 0; i < line.size(); i += stride) {
    const std::string row = line.substr(i, stride);
    EXPECT_EQ(row.substr(0, 2) + row.substr(stride - 3), ".ww.\n");
    EXPECT_EQ(row.substr(1, 5) + row.substr(stride - 7, 5), "wwwwwwwwww");
    blank += "." + std::string(stride - 3, 'w') + ".\n";
  }
  EXPECT_NE(line, blank);
  const std::string top = std::string(stride - 1, '.') + '\n' + blank.substr(0, stride);
  const std::string bottom = blank.substr(0, stride) + std::string(stride - 1, '.') + '\n';
  EXPECT_EQ(rows, top + line + bottom);
  EXPECT_EQ(picture(*tips->shownTip()).substr(1), top + line + blank + line + bottom);
  enter(without);
  EXPECT_TRUE(isGone());
}

TEST_F(ToolTip, WhenItsTimeIsOverItComesBackOnlyAfterAnotherWindow) {
  zToolTipCtrl::setDelays({10, 80});
  expectTip(tool, "T");
  waitForEnd();
  enter(tool, 8);
  EXPECT_TRUE(staysGone());
  zToolTipCtrl::setDelays({10, 5500});
  expectTip(other, "T\n\nT");
  expectTip(tool, "T");
}

TEST_F(ToolTip, EndsWithAPressThatStillWorksAndWhenItsWindowHidesOrDies) {
  expectTip(tool, "T");
  ui::pressButton();
  ui::waitFor([&] { return isGone() && tool->visualState() == kVisualHeld; }, "the press");
  ui::releaseButton();
  ui::waitFor([&] { return frame.commands == std::vector<int>{kToolId}; }, "the command");
  enter(tool, 8);
  EXPECT_TRUE(staysGone());

  expectTip(other, "T\n\nT");
  bar->show(kShowHide);
  waitForEnd();
  bar->show();
  ui::drain();
  expectTip(tool, "T");
  expectTip(other, "T\n\nT");
  delete other;
  waitForEnd();
  leave();
  expectTip(tool, "T");
  const Window window = ui::windowOf(tips->tipShell());
  tips.reset();
  ui::waitFor([&] { return !ui::isViewable(window); }, "the tip to go with its control");
}

TEST_F(ToolTip, StaysOnTheScreenAndOffThePointer) {
  ziToolHelper helper(&frame);
  const zPoint corner{theScreen().screenWidth - 1, theScreen().screenHeight - 1};
  helper.showAt(corner, "A tip in the corner");
  ui::waitFor([&] { return ui::isViewable(helper.shell()); }, "the tip");
  const ui::ScreenArea tip = ui::areaOf(helper.shell());
  EXPECT_EQ(tip.x + tip.width, corner.x + 1);
  EXPECT_EQ(tip.y + tip.height, corner.y - 3);
}

}  // namespace
