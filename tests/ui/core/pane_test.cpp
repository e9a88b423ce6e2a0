// Panes: creation, painting, scrolling, destruction, focus.

#include "framework/core/pane.h"

#include "framework/draw/screen.h"
#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>
#include <X11/Xlib.h>

namespace {

struct Pane : testing::Test {
  TestFrame frame;
};

/// Notes when it is ready, laid out and moved.
struct NotingPane : RecordingPane {
  using RecordingPane::RecordingPane;
  void displayReady() override { note("ready"); }
  int size(zEvent* event) override {
    note("size");
    return zPane::size(event);
  }
  int move(zEvent* /*event*/) override {
    note("move");
    return 0;
  }
  /// What the one paint covers that waits now.
  std::string nextPaint() {
    XSync(ui::display(), False);
    ui::waitFor([&] { return paints > 0; }, "a paint");
    ui::drain();
    EXPECT_EQ(std::exchange(paints, 0), 1);
    return asText(lastPaint);
  }
};

// From the first exposure to the end in its own paint.
TEST_F(Pane, PaintsWhatWaitsAtOnceButNotWhileLocked) {
  auto* pane = new NotingPane(&frame, frame.fill());
  EXPECT_FALSE(pane->display()->isReady());
  noted();
  frame.bringUp();
  ui::waitFor([&] { return pane->paints > 0; }, "the first paint");
  ui::drain();
  EXPECT_THAT(noted(), testing::MatchesRegex("[^r]*ready [^r]*"));
  for (const unsigned extent : {200, 120, 300}) {
    XResizeWindow(ui::display(), ui::windowOf(pane->widget()), extent, extent);
  }
  ui::drain();
  pane->paints = 0;
  EXPECT_EQ(noted(), "move size ") << "only the last of several sizes counts";
  EXPECT_EQ(asText(pane->sizer()->rect()), "0,0 300x300");

  zRect rect(30, 40, 50, 60);
  const auto paintsAtOnce = [&] {
    pane->paints = 0;
    pane->invalidate(&rect, 1);
    pane->update();
    return pane->paints;
  };
  pane->lockPaint();
  EXPECT_EQ(paintsAtOnce(), 0);
  pane->unlockPaint();
  EXPECT_EQ(paintsAtOnce(), 1);
  EXPECT_EQ(asText(pane->lastPaint), "30,40 20x20");
  ui::drain();
  pane->paints = 0;
  for (int i = 0; i < 20; ++i) {
    zRect part(10 * i, 10 * i, 10 * i + 5, 10 * i + 5);
    pane->invalidate(&part, 1);
  }
  EXPECT_EQ(pane->nextPaint(), "0,0 195x195");
  pane->invalidate(nullptr, 0);
  EXPECT_EQ(pane->nextPaint(), "0,0 300x300");

  const zRect everything({}, theScreen().size());
  const zRect part(50, 60, 150, 160);
  const std::tuple<int, int, zRect, const char*> scrolls[] = {
      {0, -30, everything, "0,270 300x30"}, {0, 30, everything, "0,0 300x30"},
      {20, 0, everything, "0,0 20x300"},    {-20, 0, everything, "280,0 20x300"},
      {0, -10, part, "50,150 100x10"},      {500, 0, part, "50,60 100x100"}};
  for (const auto& [dx, dy, area, strip] : scrolls) {
    pane->scrollRect(dx, dy, area);
    EXPECT_EQ(pane->nextPaint(), strip) << "what stays is copied";
  }

  pane->onPaint = [&] { delete std::exchange(pane, nullptr); };
  pane->invalidate(nullptr, 1);
  ui::waitFor([&] { return pane == nullptr; }, "the end of the pane");
  ui::drain();
}

TEST_F(Pane, ScrollBarsShareItsRectangle) {
  RecordingPane pane(&frame, frame.fill(), kStyleBothScrolls);
  frame.bringUp();
  ui::drain();
  const zPoint origin = {ui::areaOf(frame.widget()).x, ui::areaOf(frame.widget()).y};
  zRect whole;
  pane.getExterior(whole);
  EXPECT_EQ(whole, zRect(origin, pane.sizer()->size()));
  std::string places = asText(pane.sizer()->rect());
  for (Widget part : {pane.widget(), ui::part(frame.widget(), "ScrollbarV"),
                      ui::part(frame.widget(), "ScrollbarH")}) {
    const ui::ScreenArea area = ui::areaOf(part);
    places += " / " + asText({{area.x - origin.x, area.y - origin.y}, {area.width, area.height}});
  }
  EXPECT_EQ(places, "0,0 400x300 / 0,0 384x284 / 384,0 16x284 / 0,284 384x16");
  pane.setShowState(kShowHide);
  EXPECT_EQ(ui::partsOf(frame.widget()).size(), 0U) << "they come and go with it";
}

TEST_F(Pane, ChildrenGoWithTheirParentAndTheirWidgetsAreDestroyedThroughTheLoop) {
  auto* parent = new RecordingPane(&frame, frame.fill());
  new RecordingPane(parent);
  frame.bringUp();
  const Window window = ui::windowOf(parent->widget());
  delete parent;
  EXPECT_EQ(ui::resource(frame.widget(), "numChildren"), 1) << "this may be its own event";
  ui::waitFor([&] { return !ui::isViewable(window); }, "the pane to disappear");
  ui::drain();
  EXPECT_EQ(frame.childById(1), nullptr);
  EXPECT_EQ(ui::resource(frame.widget(), "numChildren"), 0);
}

TEST_F(Pane, FocusGivenByTheProgramArrivesAfterTheDelayAndTheLastWordCounts) {
  RecordingPane first(&frame, new zGravSizer(kGravityLeft, 100, frame.sizer()), kStyleTabStop);
  RecordingPane second(&frame, frame.fill(), kStyleTabStop);
  frame.bringUp();
  second.startFocusTimer();
  EXPECT_FALSE(ui::focusIs(second.widget()));
  ui::waitForFocus(second.widget());
  {
    const zApp::PostedMenu menu;
    first.startFocusTimer();
    const Deadline delay(Milliseconds(200));
    ui::waitFor([&] { return delay.hasPassed(); }, "the end of the delay");
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
