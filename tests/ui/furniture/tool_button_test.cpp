// Visuals and the toolbar that stands on them: events in, state, pixels and commands out.

#include "framework/menus/menu.h"
#include "framework/visuals/extra/more_visuals.h"
#include "tests/ui/furniture/window_furniture.h"

#include <X11/Xlib.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kDark = 0x808080;
constexpr std::uint32_t kFace = 0xC0C0C0;
constexpr std::uint32_t kBlack = 0x000000;

class ToolButton : public FurnitureTest {
 protected:
  /// Moves to the middle of the button and presses.
  void pressTool() {
    ui::moveTo(tool->widget(), 12, 11);
    pressHere();
  }
  /// The press may come by way of the window manager.
  void pressHere() {
    ui::pressButton();
    ui::waitFor([&] { return tool->visualState() == kVisualHeld; }, "the press");
  }
  void release() {
    ui::releaseButton();
    ui::waitFor([&] { return tool->visualState() != kVisualHeld; }, "the release");
    ui::drain();
  }
  /// The bevel's colours, top left then bottom right, and where the image's corner is.
  void expectLook(std::uint32_t topLeft, std::uint32_t bottomRight, int imageShift,
                  std::uint32_t image) {
    EXPECT_EQ(toolPixel(0, 0), kBlack);
    EXPECT_EQ(toolPixel(2, 1), topLeft);
    EXPECT_EQ(toolPixel(1, 10), topLeft);
    EXPECT_EQ(toolPixel(22, 10), bottomRight);
    EXPECT_EQ(toolPixel(12, 20), bottomRight);
    // The image is centred at (4, 3), its square begins at (8, 7).
    EXPECT_EQ(toolPixel(7 + imageShift, 6 + imageShift), kFace);
    EXPECT_EQ(toolPixel(8 + imageShift, 7 + imageShift), image);
  }
  void expectUp() { expectLook(kWhite, kDark, 0, kBlue.rgb()); }
  void expectHeld() { expectLook(kDark, kWhite, 1, kBlue.rgb()); }
};

TEST_F(ToolButton, IsPressedAndReleasedAndIssuesItsCommandOnceEachTime) {
  showFrame();
  expectUp();
  pressTool();
  EXPECT_EQ(tool->visualState(), kVisualHeld);
  expectHeld();
  EXPECT_THAT(frame.commands, IsEmpty());
  release();
  EXPECT_EQ(tool->visualState(), kVisualUp);
  expectUp();
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
  // Without a motion in between.
  pressHere();
  release();
  EXPECT_THAT(frame.commands, ElementsAre(kToolId, kToolId));
}

TEST_F(ToolButton, LeavingWhilePressedGivesTheClickUpAndComingBackTakesItUpAgain) {
  showFrame();
  pressTool();
  ui::moveTo(bar->widget(), 150, 15);
  ui::drain();
  expectUp();
  ui::moveTo(tool->widget(), 5, 5);
  ui::drain();
  expectHeld();
  ui::moveTo(bar->widget(), 150, 15);
  release();
  expectUp();
  EXPECT_THAT(frame.commands, IsEmpty());
  ui::click(tool->widget());
  ui::drain();
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
}

TEST_F(ToolButton, ComesUpAgainWhenItsReleaseWentElsewhere) {
  showFrame();
  pressTool();
  XEvent motion = {};
  motion.type = MotionNotify;
  zEvent event = zEvent::of(kMsgMouseMove);
  event.xevent = &motion;
  tool->mouseMove(&event);
  EXPECT_EQ(tool->visualState(), kVisualUp);
  ui::releaseButton();
  ui::drain();
  EXPECT_THAT(frame.commands, IsEmpty());
}

TEST_F(ToolButton, ACaptionMayGoBeforeItsButton) {
  auto* root = &bar->visuals();
  const auto place = [] { return std::make_unique<zSizer>(zPoint{100, 5}, zDimension{40, 20}); };
  auto* button = new ziVisBmpButtonInternal(root, place(), 0, 1, nullptr,
                                            ziVisBmpButtonInternal::Ownership::kOwned);
  auto* caption = new ziVisText3dBmp(root, place(), "Go", 0);
  button->setCaption(caption);
  EXPECT_TRUE(button->hasCaption());
  delete caption;
  EXPECT_FALSE(button->hasCaption());
}

TEST_F(ToolButton, OtherButtonsOfTheMouseDoNothing) {
  showFrame();
  ui::click(tool->widget(), ui::kRightButton);
  ui::click(tool->widget(), ui::kMiddleButton);
  ui::drain();
  EXPECT_EQ(tool->visualState(), kVisualUp);
  EXPECT_THAT(frame.commands, IsEmpty());
}

TEST_F(ToolButton, DisabledItIsGreyAtOnceAndDeafUntilEnabled) {
  showFrame();
  tool->disable();
  EXPECT_EQ(tool->visualState(), kVisualDisabled);
  expectLook(kWhite, kDark, 0, kDark);
  EXPECT_EQ(toolPixel(16, 15), kWhite) << "the grey image is embossed";
  ui::click(tool->widget());
  EXPECT_EQ(tool->visualState(), kVisualDisabled);
  EXPECT_THAT(frame.commands, IsEmpty());
  tool->enable();
  expectUp();
  // Disabled by its own command, as a zoom button at its limit.
  pressTool();
  tool->disable();
  release();
  EXPECT_EQ(tool->visualState(), kVisualDisabled);
  tool->enable();
  ui::click(tool->widget());
  ui::drain();
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
}

TEST_F(ToolButton, TakesNoFocus) {
  auto* pane = new zPane(&frame, new zGravSizer(kGravityFill, 0, frame.sizer()), kStyleTabStop, 1);
  pane->show();
  showFrame();
  pane->startFocusTimer();
  ui::waitForFocus(pane->widget());
  ui::click(tool->widget());
  ui::drain();
  EXPECT_TRUE(ui::focusIs(pane->widget()));
}

TEST_F(ToolButton, ABitmapButtonIsPressedByTheSpaceBarAndFiresOnItsRelease) {
  auto* button = new zBitmapButton(&frame, new zSizer(20, 60, 90, 30), 0, "Go", 77, blueSquare());
  button->show();
  showFrame();
  button->setFocus();
  ui::waitForFocus(button->widget());
  ui::pressKey('x');
  ui::drain();
  EXPECT_THAT(frame.commands, IsEmpty());
  ui::pressKey(' ');
  ui::drain();
  EXPECT_THAT(frame.commands, ElementsAre(77));
  EXPECT_EQ(button->visualState(), kVisualUp);
}

TEST_F(ToolButton, WhatCoveredItLeavesNoDirtAndANewSizeIsPaintedWhole) {
  showFrame();
  tool->display()->lock();
  zBrush dirt(kColorBlack);
  tool->display()->fillRect(zRect(0, 0, 24, 22), &dirt);
  tool->display()->unlock();
  tool->invalidate(nullptr, 0);
  ui::drain();
  expectUp();
  tool->moveResize(5, 4, 34, 22);
  ui::drain();
  EXPECT_EQ(toolPixel(33, 10), kBlack);
  EXPECT_EQ(toolPixel(32, 10), kDark);
  EXPECT_EQ(toolPixel(22, 10), kFace);
}

TEST_F(ToolButton, ItsCommandMayDestroyTheBar) {
  showFrame();
  frame.onCommand = [this] { delete bar; };
  const Window window = ui::windowOf(bar->widget());
  ui::click(tool->widget());
  ui::waitFor([&] { return !ui::isViewable(window); }, "the bar to disappear");
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
}

/// Counts commands that it hears, and takes them.
class CommandTaker : public zEvH {
 public:
  int take(zEvent* /*event*/) {
    ++taken;
    return answer;
  }
  int taken = 0;
  int answer = 1;
};

TEST_F(ToolButton, ItsCommandIsOfferedToTheMenuAlsoWhereTheItemIsGreyed) {
  auto menu = std::make_unique<zMenu>(&frame);
  zMenu sub;
  sub.appendItem(kToolId, "Zoom in", kItemGreyed);
  menu->addSubMenu(&sub, "&View", 0);
  CommandTaker taker;
  menu->setCommand(&taker, toHandler(&CommandTaker::take), kToolId);
  menu->create();
  frame.setMenu(std::move(menu));
  showFrame();
  ui::click(tool->widget());
  ui::drain();
  EXPECT_EQ(taker.taken, 1);
  EXPECT_THAT(frame.commands, IsEmpty());
  taker.answer = 0;
  ui::click(tool->widget());
  ui::drain();
  EXPECT_EQ(taker.taken, 2);
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
}

TEST_F(ToolButton, TheBarsLinesFallOnItsInnerSide) {
  struct Row {
    zGravity gravity;
    int style;
    bool top, bottom, left, right;
  };
  constexpr Row kRows[] = {
      {kGravityTop, 1, false, true, false, false},
      {kGravityBottom, 1, true, false, false, false},
      {kGravityLeft, 1, false, false, false, true},
      {kGravityRight, 1, false, false, true, false},
      {kGravityTop, 1 | 8, true, true, false, false},
      {kGravityTop, 0, false, false, false, false},
  };
  std::vector<zToolbar*> bars;
  for (const Row& row : kRows) {
    bars.push_back(
        new zToolbar(&frame, new zGravSizer(row.gravity, 12, frame.sizer()), row.style, nullptr));
    bars.back()->show();
  }
  showFrame();
  ui::waitFor([&] { return bars.back()->display()->isReady(); }, "the bars to be painted");
  ui::drain();
  for (std::size_t i = 0; i < bars.size(); ++i) {
    SCOPED_TRACE(i);
    const zDimension size = bars[i]->sizer()->size();
    const zPoint middle{size.width / 2, size.height / 2};
    const auto isLine = [&](int x, int y) { return pixel(bars[i]->display(), x, y) == kBlack; };
    EXPECT_EQ(isLine(middle.x, 0), kRows[i].top);
    EXPECT_EQ(isLine(middle.x, size.height - 1), kRows[i].bottom);
    EXPECT_EQ(isLine(0, middle.y), kRows[i].left);
    EXPECT_EQ(isLine(size.width - 1, middle.y), kRows[i].right);
  }
}

TEST_F(ToolButton, APanelsEdgesLeaveItsInside) {
  auto* inBar = &bar->visuals();
  auto* panel =
      new ziVisPanelInternal(inBar, std::make_unique<zSizer>(zPoint{100, 5}, zDimension{40, 20}),
                             ziVisPanelInternal::kOuterLine | ziVisPanelInternal::kInnerEdge, 2);
  showFrame();
  EXPECT_EQ(panel->inside(), zRect(104, 9, 136, 21));
  EXPECT_EQ(pixel(bar->display(), 100, 5), kBlack);
  EXPECT_EQ(pixel(bar->display(), 101, 6), kDark) << "sunken";
  EXPECT_EQ(pixel(bar->display(), 103, 8), kWhite) << "the inner edge is the other way round";
  EXPECT_EQ(inBar->hitTest({100, 5}), panel);
  EXPECT_EQ(inBar->hitTest({140, 5}), nullptr);
  panel->setVisible(0);
  EXPECT_EQ(inBar->hitTest({100, 5}), nullptr);
  EXPECT_FALSE(panel->intersects(zRect(0, 0, 200, 30)));
  delete panel;
  bar->invalidate(nullptr, 0);
  ui::drain();
  EXPECT_EQ(pixel(bar->display(), 100, 5), kFace);
}

}  // namespace
