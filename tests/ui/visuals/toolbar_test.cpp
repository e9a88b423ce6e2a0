// Toolbars and their buttons: input in, pictures and commands out.

#include "framework/menus/menu.h"
#include "tests/ui/visuals/visuals_test.h"

#include <X11/Xlib.h>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Plain, with a default frame, without frame, flat, with two and with three images: up, held, grey.
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
/// The rows of the images alone: all else is as in kUpStyles.
constexpr const char* kGreyImages = R"(
#w..dddd..d###w.dddd.d##....dddd........dddd....#w..dddd..d##w..bbbb..d##w..rrrr..d#
#w..dwwd..d###w.dwwd.d##....dwwd........dwwd....#w..dwwd..d##w..bbbb..d##w..rrrr..d#
#w..dddd..d###w.dddd.d##....dddd........dddd....#w..dddd..d##w..bbbb..d##w..rrrr..d#
)";

/// The plain button's part of them.
std::string plain(const std::string& buttons) {
  std::string part = "\n";
  for (std::size_t row = 1; row < buttons.size(); row += 85) {
    part += buttons.substr(row, 12) + '\n';
  }
  return part;
}

class Toolbar : public VisualsTest {
 protected:
  Toolbar() { showFrame(); }
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
  /// The number of commands after a click.
  std::size_t clickTool() {
    pressTool();
    release();
    return frame.commands.size();
  }
  void moveTo(const zWindow* window, int x) {
    ui::moveTo(window->widget(), x, 3);
    ui::drain();
  }
  std::string look() { return picture(*tool); }
};

TEST_F(Toolbar, AButtonLooksByItsStyleAndState) {
  std::vector<zToolButton*> buttons = {tool};
  for (const auto& [style, images] : {std::pair{kBmpDefaultFrame, 1},
                                      {kBmpNoFrame, 1},
                                      {kBmpFlat, 1},
                                      {kBmpImageUpDown, 2},
                                      {kBmpImageUpDisabled, 2},
                                      {kBmpImageUpDownDisabled, 3}}) {
    buttons.push_back(addTool(2 + 12 * static_cast<int>(buttons.size()), style, 1, images));
  }
  ui::waitFor([&] { return buttons[6]->display()->isReady(); }, "the last button's paint");
  const auto pictureAfter = [&](const std::function<void(zToolButton&)>& act) {
    for (zToolButton* button : buttons) {
      act(*button);
    }
    return picture(*bar, {2, 2, 86, 13});
  };
  XEvent x = {};
  zEvent event;
  event.xevent = &x;
  x.xbutton.button = Button1;
  const auto press = [&](zToolButton& button) {
    x.type = ButtonPress;
    button.mouseButtonDown(&event);
  };
  // A motion without a button: the release went elsewhere.
  const auto move = [&](zToolButton& button) {
    x.type = MotionNotify;
    button.mouseMove(&event);
  };
  ui::drain();
  EXPECT_EQ(pictureAfter([](zToolButton&) {}), kUpStyles);
  EXPECT_EQ(pictureAfter(press), kHeldStyles);
  EXPECT_EQ(pictureAfter(move), kUpStyles);
  const std::string grey = pictureAfter([](zToolButton& button) { button.disable(); });
  const std::string up = kUpStyles;
  constexpr std::size_t kImages = 1 + 4 * 85;
  constexpr std::size_t kImagesEnd = kImages + 3 * 85;
  EXPECT_EQ(grey, up.substr(0, kImages) + (kGreyImages + 1) + up.substr(kImagesEnd));
  EXPECT_EQ(pictureAfter(press), grey);
  EXPECT_FALSE(tool->isEnabled());
  EXPECT_EQ(pictureAfter([](zToolButton& button) { button.enable(); }), kUpStyles);
  EXPECT_TRUE(tool->isEnabled());
  EXPECT_THAT(frame.commands, IsEmpty());
}

TEST_F(Toolbar, AButtonIsPressedReleasedAndLeftByTheMouse) {
  pressTool();
  EXPECT_EQ(look(), plain(kHeldStyles));
  EXPECT_THAT(frame.commands, IsEmpty());
  release();
  EXPECT_EQ(look(), plain(kUpStyles));
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
  EXPECT_EQ(clickTool(), 2U) << "without a motion in between";
  // Left while it is held it comes up; the click is given up unless the pointer comes back.
  pressTool();
  moveTo(bar, 150);
  EXPECT_EQ(look(), plain(kUpStyles));
  moveTo(tool, 3);
  EXPECT_EQ(look(), plain(kHeldStyles));
  moveTo(bar, 150);
  release();
  EXPECT_EQ(look(), plain(kUpStyles));
  for (const ui::MouseButton other : {ui::kRightButton, ui::kMiddleButton}) {
    ui::click(tool->widget(), other);
  }
  ui::drain();
  // A button of the mouse that is held when it comes does not press it either.
  moveTo(bar, 150);
  ui::pressButton();
  moveTo(tool, 3);
  EXPECT_EQ(look(), plain(kUpStyles));
  release();
  EXPECT_EQ(frame.commands.size(), 2U);
  // A disabled one is deaf, also when its own command or somebody disabled it.
  tool->disable();
  ui::click(tool->widget());
  ui::drain();
  EXPECT_EQ(tool->visualState(), kVisualDisabled);
  tool->enable();
  frame.onCommand = [this] { tool->disable(); };
  EXPECT_EQ(clickTool(), 3U);
  EXPECT_EQ(tool->visualState(), kVisualDisabled);
  frame.onCommand = nullptr;
  tool->enable();
  pressTool();
  tool->disable();
  release();
  tool->enable();
  EXPECT_EQ(look(), plain(kUpStyles));
  EXPECT_EQ(clickTool(), 4U);
}

TEST_F(Toolbar, AButtonTakesNoFocusAndPaintsItselfWhole) {
  auto* pane = new zPane(&frame, new zGravSizer(kGravityFill, 0, frame.sizer()), kStyleTabStop, 1);
  pane->show();
  frame.sizer()->update(nullptr);
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
  EXPECT_EQ(look(), plain(kUpStyles));
  // An image that fills the inside is cut when it moves, not the edge.
  tool->moveResize(2, 2, 8, 7);
  ui::drain();
  const std::string up = look();
  pressTool();
  EXPECT_EQ(up + look(), R"(
########
#wwwwwd#
#wbbbbd#
#wb..bd#
#wbbbbd#
#dddddd#
########

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

TEST_F(Toolbar, ACommandIsOfferedToTheMenuAlsoWhereTheItemIsGreyedAndMayDestroyTheBar) {
  auto menu = std::make_unique<zMenu>(&frame);
  zMenu sub;
  sub.appendItem(kToolId, "Zoom in", kItemGreyed);
  menu->addSubMenu(&sub, "&View", 0);
  CommandTaker taker;
  menu->setCommand(&taker, toHandler(&CommandTaker::take), kToolId);
  menu->create();
  frame.setMenu(std::move(menu));
  EXPECT_EQ(clickTool(), 0U);
  EXPECT_EQ(taker.taken, 1);
  taker.answer = 0;
  frame.onCommand = [this] { delete bar; };
  const Window window = ui::windowOf(bar->widget());
  ui::click(tool->widget());
  ui::waitFor([&] { return !ui::isViewable(window); }, "the bar to disappear");
  EXPECT_EQ(taker.taken, 2);
  EXPECT_THAT(frame.commands, ElementsAre(kToolId));
}

TEST_F(Toolbar, TheBarsLinesFallOnItsInnerSide) {
  struct Row {
    zGravity gravity;
    int style;
    const char* lines;
  };
  for (const Row& row : {Row{kGravityTop, 1, "bottom "},
                         {kGravityBottom, 1, "top "},
                         {kGravityLeft, 1, "right "},
                         {kGravityRight, 1, "left "},
                         {kGravityTop, 0x1E, "top bottom left right "},
                         {kGravityTop, 0, ""},
                         {kGravityTop, 1 | 8 | 16, "top bottom "}}) {
    zToolbar line(&frame, new zGravSizer(row.gravity, 12, frame.sizer()), row.style, nullptr);
    line.show();
    frame.sizer()->update(nullptr);
    ui::waitFor([&] { return line.display()->isReady(); }, "the bar to be painted");
    ui::drain();
    const auto [width, height] = line.sizer()->size();
    std::string lines;
    for (const auto& [name, area] : {std::pair{"top ", zRect{0, 0, width, 1}},
                                     {"bottom ", {0, height - 1, width, height}},
                                     {"left ", {0, 0, 1, height}},
                                     {"right ", {width - 1, 0, width, height}}}) {
      lines += picture(line, area).find_first_not_of("#\n") == std::string::npos ? name : "";
    }
    EXPECT_EQ(lines, row.lines) << row.gravity;
  }
}

}  // namespace
