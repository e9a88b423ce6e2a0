// Panes: creation, painting, scrolling, adoption, destruction, focus.

#include "framework/core/pane.h"

#include "framework/draw/screen.h"
#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

class Pane : public ::testing::Test {
 protected:
  void showFrame(const RecordingPane& pane) {
    frame.show();
    ui::waitFor([&] { return pane.paints > 0; }, "the first paint");
    ui::drain();
  }
  /// What one paint covers that waits now, counted from the present number of paints.
  static zRect nextPaint(RecordingPane& pane) {
    const int before = pane.paints;
    ui::waitFor([&] { return pane.paints > before; }, "a paint");
    ui::drain();
    EXPECT_EQ(pane.paints, before + 1);
    return pane.lastPaint;
  }
  static zRect everything() { return zRect({}, theScreen().size()); }

  Journal journal;
  TestFrame frame;
};

TEST_F(Pane, AnUnreasonableSizeBecomesThatOfTheScreenAndAMoveToNothingIsIgnored) {
  const zDimension screen = theScreen().size();
  const std::pair<zDimension, zDimension> rows[] = {
      {{5001, 10}, screen}, {{10, 5001}, screen}, {{5000, 10}, {5000, 10}}, {{0, 10}, {1, 10}}};
  for (const auto& [asked, taken] : rows) {
    RecordingPane pane(&frame, new zSizer(zPoint{3, 4}, asked), journal);
    EXPECT_EQ(ui::resource(pane.widget(), "width"), taken.width);
    EXPECT_EQ(ui::resource(pane.widget(), "height"), taken.height);
    EXPECT_EQ(ui::resource(pane.widget(), "x"), 3);
    pane.moveResize(1, 1, 0, 20);
    pane.moveResize(1, 1, 20, 0);
    EXPECT_EQ(pane.sizer()->rect(), zRect(zPoint{3, 4}, asked));
    pane.moveResize(7, 8, 1, 1);
    EXPECT_EQ(pane.sizer()->rect(), zRect(zPoint{7, 8}, zDimension{1, 1}));
  }
}

TEST_F(Pane, IsReadyWithTheFirstExposureThenPaintsWhatWaitsAtOnceButNotWhileLocked) {
  RecordingPane pane(&frame, frame.fill(), journal);
  EXPECT_FALSE(pane.display()->isReady());
  showFrame(pane);
  EXPECT_EQ(pane.readies, 1);
  for (int i = 0; i < 20; ++i) {
    zRect rect(10 * i, 10 * i, 10 * i + 5, 10 * i + 5);
    pane.invalidate(&rect, 1);
  }
  EXPECT_EQ(nextPaint(pane), zRect(0, 0, 195, 195));
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

TEST_F(Pane, IsPaintedOnItsOwnDisplayWhateverIsPushedAndMayEndInItsPaint) {
  auto* pane = new RecordingPane(&frame, frame.fill(), journal);
  showFrame(*pane);
  zDisplay* const own = pane->display();
  zWinDisplay pushed(*pane);
  pane->pushDisplay(&pushed);
  bool wasOwn = false;
  pane->onPaint = [&] { wasOwn = pane->display() == own; };
  own->invalidate(nullptr, 1);
  nextPaint(*pane);
  EXPECT_TRUE(wasOwn);
  EXPECT_EQ(pane->display(), &pushed);
  pane->popDisplay();
  EXPECT_EQ(pane->display(), own);
  pane->onPaint = [&] { delete std::exchange(pane, nullptr); };
  pane->invalidate(nullptr, 1);
  ui::waitFor([&] { return pane == nullptr; }, "the end of the pane");
  ui::drain();
}

TEST_F(Pane, IsLaidOutOnceForTheLastOfSeveralSizes) {
  RecordingPane pane(&frame, frame.fill(), journal);
  showFrame(pane);
  pane.sizes = pane.moves = 0;
  for (const unsigned extent : {200, 120, 90}) {
    XResizeWindow(ui::display(), ui::windowOf(pane.widget()), extent, extent);
  }
  ui::drain();
  EXPECT_EQ(pane.sizes, 1);
  EXPECT_EQ(pane.moves, 1);
  EXPECT_EQ(pane.sizer()->size(), (zDimension{90, 90}));
}

TEST_F(Pane, ScrollBarsShareItsRectangle) {
  RecordingPane pane(&frame, frame.fill(), journal, kStyleBothScrolls);
  showFrame(pane);
  const ui::ScreenArea board = ui::areaOf(frame.widget());
  const ui::ScreenArea inner = ui::areaOf(pane.widget());
  const int across = board.width - inner.width;
  const int down = board.height - inner.height;
  EXPECT_GT(across, 5);
  EXPECT_GT(down, 5);
  EXPECT_EQ(ui::areaOf(ui::part(frame.widget(), "ScrollbarV")),
            (ui::ScreenArea{board.x + inner.width, board.y, across, inner.height}));
  EXPECT_EQ(ui::areaOf(ui::part(frame.widget(), "ScrollbarH")),
            (ui::ScreenArea{board.x, board.y + inner.height, inner.width, down}));
  zRect outer;
  pane.getExterior(outer);
  EXPECT_EQ(outer, zRect(zPoint{board.x, board.y}, zDimension{board.width, board.height}));
  EXPECT_EQ(pane.sizer()->size(), outer.size());
  pane.setShowState(kShowHide);
  EXPECT_EQ(ui::partsOf(frame.widget()).size(), 0U) << "they come and go with it";
}

TEST_F(Pane, ScrollingCopiesWhatStaysAndPaintsTheStripThatBecomesFree) {
  RecordingPane pane(&frame, frame.fill(), journal);
  showFrame(pane);
  const auto [width, height] = pane.sizer()->size();
  const struct {
    int dx, dy;
    zRect area, strip;
  } rows[] = {{0, -30, everything(), {0, height - 30, width, height}},
              {0, 30, everything(), {0, 0, width, 30}},
              {20, 0, everything(), {0, 0, 20, height}},
              {-20, 0, everything(), {width - 20, 0, width, height}},
              {0, -10, {50, 60, 150, 160}, {50, 150, 150, 160}},
              {500, 0, {50, 60, 150, 160}, {50, 60, 150, 160}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.dx << " " << row.dy);
    pane.scrollRect(row.dx, row.dy, row.area);
    EXPECT_EQ(nextPaint(pane), row.strip);
  }
}

TEST_F(Pane, ChildrenGoWithTheirParentAndTheirWidgetsAreDestroyedThroughTheLoop) {
  auto* parent = new RecordingPane(&frame, frame.fill(), journal);
  auto* child = new RecordingPane(parent, nullptr, journal);
  showFrame(*child);
  Window window = ui::windowOf(parent->widget());
  const int widgets = ui::resource(frame.widget(), "numChildren");
  delete parent;
  EXPECT_EQ(ui::resource(frame.widget(), "numChildren"), widgets)
      << "this may be the widget's own event";
  ui::waitFor([&] { return !ui::isViewable(window); }, "the pane to disappear");
  ui::drain();
  EXPECT_EQ(frame.childById(1), nullptr);
  EXPECT_EQ(ui::resource(frame.widget(), "numChildren"), widgets - 1);
}

TEST_F(Pane, FocusGivenByTheProgramArrivesAfterTheDelayAndTheLastWordCounts) {
  RecordingPane first(&frame, new zGravSizer(kGravityLeft, 100, frame.sizer()), journal,
                      kStyleTabStop);
  RecordingPane second(&frame, frame.fill(), journal, kStyleTabStop);
  showFrame(second);
  second.startFocusTimer();
  EXPECT_FALSE(ui::focusIs(second.widget()));
  ui::waitForFocus(second.widget());
  {
    const zApp::PostedMenu menu;
    EXPECT_FALSE(first.takeFocus());
    first.startFocusTimer();
    const Deadline deadline(Milliseconds(200));
    ui::waitFor([&] { return deadline.hasPassed(); }, "the end of the delay");
    EXPECT_TRUE(ui::focusIs(second.widget())) << "the menu would go";
  }
  ui::waitForFocus(first.widget());
  second.setReachable(false);
  ui::pressKey(XK_Tab);
  EXPECT_TRUE(ui::focusIs(first.widget()));
  second.setReachable(true);
  ui::pressKey(XK_Tab);
  EXPECT_TRUE(ui::focusIs(second.widget()));
}

}  // namespace
