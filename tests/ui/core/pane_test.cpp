// Panes: creation, painting, scrolling, adoption, destruction.

#include <gmock/gmock.h>

#include "framework/core/application.h"
#include "framework/draw/screen.h"
#include "framework/draw/x_handles.h"
#include "tests/ui/core/recording.h"
#include "tests/ui/support/ui_test.h"

#include <X11/Intrinsic.h>

namespace {

using ::testing::ElementsAre;

class Pane : public ::testing::Test {
 protected:
  void showFrame(const RecordingPane& pane) {
    frame.show();
    ui::waitFor([&] { return pane.paints > 0; }, "the first paint");
    ui::drain();
  }
  zSizer* fill() { return new zGravSizer(kGravityFill, 0, frame.sizer()); }

  Journal journal;
  TestFrame frame;
};

TEST_F(Pane, AnUnreasonableSizeBecomesThatOfTheScreen) {
  const RecordingPane pane(&frame, new zSizer(0, 0, 5001, 10, nullptr), journal);
  const ui::ScreenArea screen = {0, 0, theScreen().screenWidth, theScreen().screenHeight};
  frame.show();
  EXPECT_EQ(ui::areaOf(pane.widget()).width, screen.width);
  EXPECT_EQ(ui::areaOf(pane.widget()).height, screen.height);
}

TEST_F(Pane, IsReadyOnceWithTheFirstExposureAndNotBefore) {
  RecordingPane pane(&frame, fill(), journal);
  EXPECT_FALSE(pane.display()->isReady());
  showFrame(pane);
  EXPECT_EQ(pane.readies, 1);
  EXPECT_TRUE(pane.display()->isReady());
}

TEST_F(Pane, OnePaintServesAllRectanglesThatWaitAndNothingMore) {
  RecordingPane pane(&frame, fill(), journal);
  showFrame(pane);
  pane.paints = 0;
  for (int i = 0; i < 20; ++i) {
    zRect rect(10 * i, 10 * i, 10 * i + 5, 10 * i + 5);
    pane.invalidate(&rect, 1);
  }
  ui::waitFor([&] { return pane.paints > 0; }, "a paint");
  ui::drain();
  EXPECT_EQ(pane.paints, 1);
  EXPECT_EQ(pane.lastPaint, zRect(0, 0, 195, 195));
}

TEST_F(Pane, UpdatePaintsAtOnceAndNothingIsPaintedWhileLocked) {
  RecordingPane pane(&frame, fill(), journal);
  showFrame(pane);
  pane.paints = 0;
  zRect rect(30, 40, 50, 60);
  pane.lockPaint();
  pane.invalidate(&rect, 1);
  pane.update();
  ui::drain();
  EXPECT_EQ(pane.paints, 0);
  pane.unlockPaint();
  pane.invalidate(&rect, 1);
  pane.update();
  EXPECT_EQ(pane.paints, 1);
  EXPECT_EQ(pane.lastPaint, rect);
  pane.invalidate(nullptr, 0);
  pane.update();
  zRect interior;
  pane.getInterior(interior);
  EXPECT_EQ(pane.lastPaint, interior) << "no rectangle stands for the whole pane";
}

TEST_F(Pane, IsLaidOutOnceForTheLastOfSeveralSizes) {
  RecordingPane pane(&frame, fill(), journal);
  showFrame(pane);
  pane.sizes = 0;
  for (const unsigned extent : {200, 120, 90}) {
    XResizeWindow(ui::display(), XtWindow(pane.widget()), extent, extent);
  }
  ui::drain();
  EXPECT_EQ(pane.sizes, 1);
  EXPECT_EQ(pane.sizer()->size(), (zDimension{90, 90}));
}

TEST_F(Pane, AMoveToNothingIsIgnored) {
  RecordingPane pane(&frame, new zSizer(5, 5, 50, 60, nullptr), journal);
  pane.moveResize(1, 1, 0, 20);
  pane.moveResize(1, 1, 20, 0);
  EXPECT_EQ(pane.sizer()->rect(), zRect(zPoint{5, 5}, zDimension{50, 60}));
}

TEST_F(Pane, ScrollBarsShareItsRectangle) {
  RecordingPane pane(&frame, fill(), journal, kStyleVertScroll | kStyleHorzScroll);
  showFrame(pane);
  const ui::ScreenArea board = ui::areaOf(frame.widget());
  const ui::ScreenArea inner = ui::areaOf(pane.widget());
  EXPECT_EQ(inner.x, board.x);
  EXPECT_LT(inner.width, board.width);
  EXPECT_LT(inner.height, board.height);
  zRect outer;
  pane.getExterior(outer);
  EXPECT_EQ(outer.size(), (zDimension{board.width, board.height}));
  EXPECT_EQ(pane.sizer()->size(), outer.size());
}

TEST_F(Pane, ScrollingCopiesWhatStaysAndPaintsTheStripThatBecomesFree) {
  RecordingPane pane(&frame, fill(), journal);
  showFrame(pane);
  pane.paints = 0;
  const zDimension size = pane.sizer()->size();
  pane.scrollRect(0, -30, zRect(zPoint{}, {theScreen().screenWidth, theScreen().screenHeight}));
  ui::waitFor([&] { return pane.paints > 0; }, "the free strip to be painted");
  EXPECT_EQ(pane.lastPaint.bottom, size.height);
  EXPECT_EQ(pane.lastPaint.right, size.width);
  EXPECT_LE(pane.lastPaint.height(), 32);
}

TEST_F(Pane, AdoptionTakesPlaceWidgetSizerAndHandlersOfAnotherWindow) {
  auto* replaced = new RecordingPane(&frame, new zSizer(7, 8, 90, 100, nullptr), journal, 0, 42);
  RecordingPane last(&frame, nullptr, journal, 0, 43);
  Recorder recorder(journal, "r");
  replaced->addPlainHandler(&recorder, toHandler(&Recorder::first), kMsgKeyDown);
  Widget widget = replaced->widget();
  zSizer* sizer = replaced->sizer();
  {
    zPane adopter(&frame, 42);
    EXPECT_EQ(adopter.widget(), widget);
    EXPECT_EQ(adopter.sizer(), sizer);
    EXPECT_EQ(frame.childById(42), &adopter);
    EXPECT_EQ(last.nextSibling(), &adopter) << "the place among the children is the same";
    zEvent key = zEvent::of(kMsgKeyDown);
    zDispatch(key, &adopter);
    EXPECT_THAT(journal, ElementsAre("r.first 256"));
    last.show(kShowHide);
    frame.show();
    ui::waitFor([&] { return adopter.display()->isReady(); }, "the first paint");
    EXPECT_EQ(replaced->paints, 0) << "exposures are the new window's";
  }
  EXPECT_EQ(frame.childById(42), nullptr);
}

TEST_F(Pane, ChildrenGoWithTheirParentAndTheirWidgetsAreDestroyedThroughTheLoop) {
  auto* parent = new RecordingPane(&frame, fill(), journal);
  auto* child = new RecordingPane(parent, nullptr, journal);
  showFrame(*child);
  Window window = ui::windowOf(parent->widget());
  delete parent;
  ui::waitFor([&] { return !ui::isViewable(window); }, "the pane to disappear");
  ui::drain();
  EXPECT_EQ(frame.childById(1), nullptr);
}

TEST_F(Pane, FocusGivenByTheProgramArrivesAfterTheDelay) {
  RecordingPane first(&frame, new zGravSizer(kGravityLeft, 100, frame.sizer()), journal,
                      kStyleTabStop);
  RecordingPane second(&frame, fill(), journal, kStyleTabStop);
  showFrame(second);
  second.startFocusTimer();
  ui::waitForFocus(second.widget());
  first.startFocusTimer();
  first.startFocusTimer();
  ui::waitForFocus(first.widget());
}

}  // namespace
