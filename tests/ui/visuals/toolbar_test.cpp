// Toolbars and their buttons: input in, pictures and commands out.

#include "tests/ui/visuals/visuals_test.h"

#include "framework/menus/menu.h"

#include <X11/Xlib.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* kUp = R"(
############
#wwwwwwwwwd#
#w........d#
#w........d#
#w..bbbb..d#
#w..b..b..d#
#w..bbbb..d#
#w........d#
#w........d#
#dddddddddd#
############
)";
constexpr const char* kHeld = R"(
############
#dddddddddw#
#d........w#
#d........w#
#d........w#
#d...bbbb.w#
#d...b..b.w#
#d...bbbb.w#
#d........w#
#wwwwwwwwww#
############
)";

/// Plain, with a default frame, without frame, flat, with two and with three images.
constexpr const char* kUpStyles = R"(
########################........................####################################
#wwwwwwwwwd#############........................#wwwwwwwwwd##wwwwwwwwwd##wwwwwwwwwd#
#w........d###wwwwwwwd##........................#w........d##w........d##w........d#
#w........d###w......d##........................#w........d##w........d##w........d#
#w..bbbb..d###w.bbbb.d##....bbbb........bbbb....#w..bbbb..d##w..bbbb..d##w..bbbb..d#
#w..b..b..d###w.b..b.d##....b..b........b..b....#w..b..b..d##w..b..b..d##w..b..b..d#
#w..bbbb..d###w.bbbb.d##....bbbb........bbbb....#w..bbbb..d##w..bbbb..d##w..bbbb..d#
#w........d###w......d##........................#w........d##w........d##w........d#
#w........d###dddddddd##........................#w........d##w........d##w........d#
#dddddddddd#############........................#dddddddddd##dddddddddd##dddddddddd#
########################........................####################################
)";
constexpr const char* kHeldStyles = R"(
########################........................####################################
#dddddddddw#############........................#dddddddddw##dddddddddw##dddddddddw#
#d........w###dddddddw##........................#d........w##d........w##d........w#
#d........w###d......w##........................#d........w##d........w##d........w#
#d........w###d......w##................bbbb....#d........w##d........w##d........w#
#d...bbbb.w###d..bbbbw##.....bbbb.......b..b....#d...bbbb.w##d...bbbb.w##d...bbbb.w#
#d...b..b.w###d..b..bw##.....b..b.......bbbb....#d...bbbb.w##d...b..b.w##d...bbbb.w#
#d...bbbb.w###d..bbbbw##.....bbbb...............#d...bbbb.w##d...bbbb.w##d...bbbb.w#
#d........w###wwwwwwww##........................#d........w##d........w##d........w#
#wwwwwwwwww#############........................#wwwwwwwwww##wwwwwwwwww##wwwwwwwwww#
########################........................####################################
)";
constexpr const char* kGreyStyles = R"(
########################........................####################################
#wwwwwwwwwd#############........................#wwwwwwwwwd##wwwwwwwwwd##wwwwwwwwwd#
#w........d###wwwwwwwd##........................#w........d##w........d##w........d#
#w........d###w......d##........................#w........d##w........d##w........d#
#w..dddd..d###w.dddd.d##....dddd........dddd....#w..dddd..d##w..bbbb..d##w..rrrr..d#
#w..dwwd..d###w.dwwd.d##....dwwd........dwwd....#w..dwwd..d##w..bbbb..d##w..rrrr..d#
#w..dddd..d###w.dddd.d##....dddd........dddd....#w..dddd..d##w..bbbb..d##w..rrrr..d#
#w........d###w......d##........................#w........d##w........d##w........d#
#w........d###dddddddd##........................#w........d##w........d##w........d#
#dddddddddd#############........................#dddddddddd##dddddddddd##dddddddddd#
########################........................####################################
)";

class Toolbar : public VisualsTest {
 protected:
  void pressTool() {
    ui::moveTo(tool->widget(), 6, 5);
    ui::pressButton();
    // The press may come by way of the window manager.
    ui::waitFor([&] { return tool->visualState() == kVisualHeld; }, "the press");
    ui::drain();
  }
  void release() {
    ui::releaseButton();
    ui::drain();
  }
  void clickTool() {
    pressTool();
    release();
  }
  void leave() {
    ui::moveTo(bar->widget(), 150, 8);
    ui::drain();
  }
  std::string look() { return picture(*tool); }
};

TEST_F(Toolbar, AButtonLooksByItsStyleAndState) {
  const int styles[] = {kBmpDefaultFrame, kBmpNoFrame,         kBmpFlat,
                        kBmpImageUpDown,  kBmpImageUpDisabled, kBmpImageUpDownDisabled};
  std::vector<zToolButton*> buttons;
  for (const int style : styles) {
    const int images = style == kBmpImageUpDown || style == kBmpImageUpDisabled ? 2
                       : style == kBmpImageUpDownDisabled                       ? 3
                                                                                : 1;
    buttons.push_back(addTool(2 + 12 * (1 + static_cast<int>(buttons.size())), style, 1, images));
  }
  buttons.push_back(tool);
  const zRect strip{2, 2, 86, 13};
  showFrame();
  ui::waitFor([&] { return buttons[5]->display()->isReady(); }, "the last button's paint");
  EXPECT_EQ(picture(*bar, strip), kUpStyles);
  XEvent press = {};
  press.type = ButtonPress;
  press.xbutton.button = Button1;
  zEvent event;
  event.xevent = &press;
  for (zToolButton* button : buttons) {
    button->mouseButtonDown(&event);
  }
  EXPECT_EQ(picture(*bar, strip), kHeldStyles);
  // A motion without a button: the release went elsewhere.
  XEvent motion = {};
  motion.type = MotionNotify;
  event.xevent = &motion;
  for (zToolButton* button : buttons) {
    button->mouseMove(&event);
    EXPECT_EQ(button->visualState(), kVisualUp);
  }
  EXPECT_EQ(picture(*bar, strip), kUpStyles);
  for (zToolButton* button : buttons) {
    button->disable();
    EXPECT_FALSE(button->isEnabled());
    button->mouseButtonDown(&event);
  }
  EXPECT_EQ(picture(*bar, strip), kGreyStyles);
  for (zToolButton* button : buttons) {
    button->enable();
    EXPECT_TRUE(button->isEnabled());
  }
  EXPECT_EQ(picture(*bar, strip), kUpStyles);
  EXPECT_THAT(frame.commands, IsEmpty());
}

TEST_F(Toolbar, AButtonIsPressedReleasedAndLeftByTheMouse) {
  showFrame();
  pressTool();
  EXPECT_EQ(look(), kHeld);
  EXPECT_THAT(frame.commands, IsEmpty());
  release();
  EXPECT_EQ(look(), kUp);
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
  // Without a motion in between.
  clickTool();
  EXPECT_THAT(frame.commands, ElementsAre(kToolId, kToolId));
  // Left while it is held it comes up; the click is given up unless the pointer comes back.
  pressTool();
  leave();
  EXPECT_EQ(look(), kUp);
  ui::moveTo(tool->widget(), 3, 3);
  ui::drain();
  EXPECT_EQ(look(), kHeld);
  leave();
  release();
  EXPECT_EQ(look(), kUp);
  for (const ui::MouseButton other : {ui::kRightButton, ui::kMiddleButton}) {
    ui::click(tool->widget(), other);
  }
  ui::drain();
  // A button of the mouse that is held when it comes does not press it either.
  leave();
  ui::pressButton();
  ui::moveTo(tool->widget(), 3, 3);
  ui::drain();
  EXPECT_EQ(look(), kUp);
  release();
  EXPECT_EQ(frame.commands.size(), 2U);
  clickTool();
  EXPECT_EQ(frame.commands.size(), 3U);
}

TEST_F(Toolbar, ADisabledButtonIsDeafAlsoWhenItsOwnCommandDisabledIt) {
  showFrame();
  tool->disable();
  ui::click(tool->widget());
  ui::drain();
  EXPECT_EQ(tool->visualState(), kVisualDisabled);
  tool->enable();
  frame.onCommand = [this] { tool->disable(); };
  clickTool();
  EXPECT_EQ(tool->visualState(), kVisualDisabled);
  frame.onCommand = nullptr;
  tool->enable();
  pressTool();
  tool->disable();
  release();
  tool->enable();
  EXPECT_EQ(look(), kUp);
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
  clickTool();
  EXPECT_THAT(frame.commands, ElementsAre(kToolId, kToolId));
}

TEST_F(Toolbar, AButtonTakesNoFocusAndPaintsItselfWhole) {
  auto* pane = new zPane(&frame, new zGravSizer(kGravityFill, 0, frame.sizer()), kStyleTabStop, 1);
  pane->show();
  showFrame();
  pane->startFocusTimer();
  ui::waitForFocus(pane->widget());
  clickTool();
  EXPECT_TRUE(ui::focusIs(pane->widget()));
  tool->display()->lock();
  zBrush dirt(kColorBlack);
  tool->display()->fillRect(zRect({}, kToolSize), &dirt);
  tool->display()->unlock();
  tool->invalidate(nullptr, 0);
  ui::drain();
  EXPECT_EQ(look(), kUp);
  tool->moveResize(2, 2, 8, 7);
  ui::drain();
  EXPECT_EQ(look(), R"(
########
#wwwwwd#
#wbbbbd#
#wb..bd#
#wbbbbd#
#dddddd#
########
)");
  // An image that fills the inside is cut when it moves, not the edge.
  pressTool();
  EXPECT_EQ(look(), R"(
########
#dddddw#
#d....w#
#d.bbbw#
#d.b..w#
#wwwwww#
########
)");
  release();
}

TEST_F(Toolbar, ItsCommandMayDestroyTheBar) {
  showFrame();
  frame.onCommand = [this] { delete bar; };
  const Window window = ui::windowOf(bar->widget());
  ui::click(tool->widget());
  ui::waitFor([&] { return !ui::isViewable(window); }, "the bar to disappear");
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
}

/// Takes commands, or only hears them.
class CommandTaker : public zEvH {
 public:
  int take(zEvent* /*event*/) {
    ++taken;
    return answer;
  }
  int taken = 0;
  int answer = 1;
};

TEST_F(Toolbar, ACommandIsOfferedToTheMenuAlsoWhereTheItemIsGreyed) {
  auto menu = std::make_unique<zMenu>(&frame);
  zMenu sub;
  sub.appendItem(kToolId, "Zoom in", kItemGreyed);
  menu->addSubMenu(&sub, "&View", 0);
  CommandTaker taker;
  menu->setCommand(&taker, toHandler(&CommandTaker::take), kToolId);
  menu->create();
  frame.setMenu(std::move(menu));
  showFrame();
  clickTool();
  EXPECT_EQ(taker.taken, 1);
  EXPECT_THAT(frame.commands, IsEmpty());
  taker.answer = 0;
  clickTool();
  EXPECT_EQ(taker.taken, 2);
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
}

TEST_F(Toolbar, TheBarsLinesFallOnItsInnerSide) {
  struct Row {
    zGravity gravity;
    int style;
    const char* lines;
  };
  constexpr Row kRows[] = {
      {kGravityTop, 1, "bottom "},
      {kGravityBottom, 1, "top "},
      {kGravityLeft, 1, "right "},
      {kGravityRight, 1, "left "},
      {kGravityTop, 0x1E, "top bottom left right "},
      {kGravityTop, 0, ""},
      {kGravityTop, 1 | 8 | 16, "top bottom "},
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
    const auto [width, height] = bars[i]->sizer()->size();
    const auto has = [&](const char* line, const zRect& area) {
      const bool isLine = picture(*bars[i], area).find_first_not_of("#\n") == std::string::npos;
      return isLine ? line : "";
    };
    const std::string lines = std::string(has("top ", {0, 0, width, 1})) +
                              has("bottom ", {0, height - 1, width, height}) +
                              has("left ", {0, 0, 1, height}) +
                              has("right ", {width - 1, 0, width, height});
    EXPECT_EQ(lines, kRows[i].lines) << i;
  }
}

}  // namespace
