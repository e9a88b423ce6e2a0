// Frames on the screen: geometry, closing, activation.

#include <gmock/gmock.h>

#include "framework/core/application.h"
#include "framework/draw/screen.h"
#include "tests/ui/core/recording.h"
#include "tests/ui/support/ui_test.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::Le;

void showAndWait(zAppFrame& frame) {
  frame.show();
  ui::waitFor([&] { return ui::isViewable(frame.shell()); }, "the frame on the screen");
}

TEST(Frame, WithoutAGivenPlaceItTakesAPartOfTheScreenInTheUpperLeftQuarter) {
  const TestFrame frame(new zSizer(nullptr));
  const ziScreen& screen = theScreen();
  EXPECT_EQ(frame.sizer()->size(), (zDimension{screen.screenWidth / 2, screen.screenHeight / 3}));
  EXPECT_THAT(frame.sizer()->pos().x, AllOf(Ge(0), Le(screen.screenWidth / 2)));
  EXPECT_THAT(frame.sizer()->pos().y, AllOf(Ge(0), Le(screen.screenHeight / 2)));
}

TEST(Frame, TheFirstOneIsTheMainWindowAndAnotherOneIsNot) {
  TestFrame first;
  TestFrame second;
  EXPECT_EQ(zApp::instance()->mainWindow(), &first);
  showAndWait(first);
  showAndWait(second);
  second.show(kShowHide);
  ui::drain();
  EXPECT_TRUE(ui::isViewable(second.shell())) << "only the main window has show states";
  first.show(kShowHide);
  ui::waitFor([&] { return !ui::isViewable(first.shell()); }, "the main window to go");
  first.show(kShowNormal);
  ui::waitFor([&] { return ui::isViewable(first.shell()); }, "the main window to come back");
}

TEST(Frame, TheOuterRectangleHasTheDecorationAndIsWhatMovingTakes) {
  TestFrame frame;
  showAndWait(frame);
  frame.moveResize(200, 150, 500, 400);
  ui::waitFor(
      [&] {
        zRect now;
        frame.getExterior(now);
        return now.size() == zDimension{500, 400};
      },
      "the outer size asked for");
  const ui::ScreenArea client = ui::areaOf(frame.shell());
  EXPECT_LT(client.width, 500);
  EXPECT_LT(client.height, 400 - 10);
  zRect again;
  const unsigned long before = XNextRequest(ui::display());
  frame.getExterior(again);
  EXPECT_EQ(XNextRequest(ui::display()), before) << "what is known is not asked again";
}

TEST(Frame, AMoveBeforeItIsShownTakesEffectWhenItIs) {
  TestFrame frame;
  frame.moveResize(320, 240, 450, 350);
  showAndWait(frame);
  EXPECT_EQ(ui::areaOf(frame.shell()).width, 450);
  EXPECT_EQ(ui::areaOf(frame.shell()).height, 350);
  zRect outer;
  frame.getExterior(outer);
  EXPECT_EQ(outer.pos(), (zPoint{320, 240}));
}

TEST(Frame, SizesThatTheUserTypesCountFromNothing) {
  TestFrame frame;
  frame.setMinSize({300, 200});
  showAndWait(frame);
  XSizeHints hints;
  long supplied = 0;
  XGetWMNormalHints(zApp::instance()->display(), ui::windowOf(frame.shell()), &hints, &supplied);
  EXPECT_TRUE((hints.flags & PBaseSize) != 0);
  EXPECT_EQ(hints.base_width, 0);
  EXPECT_EQ(hints.base_height, 0);
}

TEST(Frame, TellsWhenTheWindowManagerActivatesIt) {
  TestFrame first;
  showAndWait(first);
  ui::waitFor([&] { return !first.activations.empty(); }, "activation");
  TestFrame second;
  showAndWait(second);
  ui::waitFor([&] { return first.activations.size() >= 2; }, "deactivation");
  EXPECT_THAT(first.activations, ElementsAre("in", "out"));
}

TEST(Frame, AResizeByTheWindowManagerTravelsThroughSizersAndPanes) {
  Journal journal;
  TestFrame frame;
  RecordingPane left(&frame, new zGravSizer(kGravityLeft, 120, frame.sizer()), journal);
  RecordingPane rest(&frame, new zGravSizer(kGravityFill, 0, frame.sizer()), journal);
  RecordingPane strip(&rest, new zGravSizer(kGravityBottom, 30, rest.sizer()), journal);
  RecordingPane inside(&strip, nullptr, journal);
  showAndWait(frame);
  const ui::ScreenArea before = ui::areaOf(frame.widget());
  frame.moveResize(100, 100, 640, 480);
  ui::waitFor([&] { return ui::areaOf(frame.widget()).width != before.width; }, "the new size");
  ui::drain();
  const ui::ScreenArea board = ui::areaOf(frame.widget());
  EXPECT_EQ(ui::areaOf(left.widget()), (ui::ScreenArea{board.x, board.y, 120, board.height}));
  EXPECT_EQ(ui::areaOf(rest.widget()),
            (ui::ScreenArea{board.x + 120, board.y, board.width - 120, board.height}));
  const ui::ScreenArea expectedStrip = {board.x + 120, board.y + board.height - 30,
                                        board.width - 120, 30};
  EXPECT_EQ(ui::areaOf(strip.widget()), expectedStrip);
  EXPECT_EQ(ui::areaOf(inside.widget()), expectedStrip)
      << "a window without a sizer follows its parent";
  EXPECT_EQ(rest.sizer()->size(), (zDimension{board.width - 120, board.height}));
}

}  // namespace
