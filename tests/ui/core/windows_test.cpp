// Windows and panes: the order in which events are offered and what handlers may do meanwhile,
// painting, scrolling, destruction, focus.

#include "framework/core/pane.h"

#include "tests/ui/core/core_test.h"

#include <X11/Intrinsic.h>

namespace {

constexpr int kId = 17;
constexpr int kCode = 5;

/// Notes what reaches its operations.
struct NotingPane : RecordingPane {
  using RecordingPane::RecordingPane;
  int command(zEvent* event) override { return reached("command", *event); }
  int character(zEvent* event) override { return reached("character", *event); }
  int mouseButtonDown(zEvent* event) override { return reached("down", *event); }
  int mouseButtonUp(zEvent* event) override { return reached("up", *event); }
  int focus(zEvent* event) override { return reached("focus", *event); }
  int childFocusChanged(zWindow* previous, zWindow* current) override {
    const int from = previous == nullptr ? 0 : previous->id();
    note(std::to_string(id()) + ":" + std::to_string(from) + ">" + std::to_string(current->id()));
    return 1;
  }
  void displayReady() override { note("ready"); }
  int move(zEvent* event) override { return reached("move", *event); }
  int size(zEvent* event) override {
    reached("size", *event);
    return zPane::size(event);
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

class Windows : public testing::Test {
 protected:
  /// What is noted while `event` is dispatched to `window`.
  static std::string dispatched(zEvent event, zWindow& window) {
    zDispatch(event, &window);
    return noted();
  }
  static std::string pressed(ui::KeySymbol key, unsigned modifiers = ui::kNoModifier) {
    noted();
    ui::pressKey(key, modifiers);
    return noted();
  }

  TestFrame frame;
  Recorder recorder{"r"};
  Recorder other{"o"};
};

TEST_F(Windows, OfferEventsToControlHandlersThenHandlersThenTheApplicationThenTheWindow) {
  NotingPane pane(&frame);
  NotingPane child(&pane, nullptr, 0, kId);
  zNotifyNodeDlist& all = zApp::instance()->handlers();
  all.add(std::make_unique<zNotifyNode>(&recorder, kSecond, kMsgCommand));
  pane.addHandler(&other, kFirst, kMsgCommand);
  child.addCtrlHandler(&recorder, kFirst, kCode);
  const auto command = [&](int id = kId, int code = kCode) {
    zEvent event = zEvent::of(kMsgCommand, id);
    event.lparam = code;
    return dispatched(event, pane);
  };
  EXPECT_EQ(command(), "r1:273:17 o1:273:17 r2:273:17 command:273:17 ");
  EXPECT_EQ(command(kId, kCode + 1), "o1:273:17 r2:273:17 command:273:17 ");
  EXPECT_EQ(command(kId - 1), "o1:273:16 r2:273:16 command:273:16 ");
  EXPECT_EQ(command(kId + 1), "o1:273:18 r2:273:18 command:273:18 ");
  EXPECT_EQ(dispatched(zEvent::of(kMsgKeyUp, kId), pane), "");
  other.taken = 1;
  EXPECT_EQ(command(), "r1:273:17 o1:273:17 ");
  recorder.taken = 1;
  EXPECT_EQ(command(), "r1:273:17 ");
  pane.removeHandler(&other, kFirst, kMsgCommand);
  child.removeCtrlHandler(&recorder, kFirst, kCode + 1);
  child.removeCtrlHandler(&recorder, kFirst, kCode);
  EXPECT_EQ(command(), "r2:273:17 ");
  recorder.taken = 0;
  all.remove(zEvent::of(kMsgCommand), &recorder, kSecond);
  EXPECT_EQ(command(), "command:273:17 ");
}

TEST_F(Windows, AskTheLatestHandlerFirstAndHandlersMayBeRemovedInTheMiddleOfAWalk) {
  const zEvent moved = zEvent::of(kMsgMouseMove);
  frame.addHandler(&recorder, kFirst, kMsgMouseMove);
  frame.addHandler(&recorder, kSecond, kMsgMouseMove);
  frame.addHandler(&other, kFirst, kMsgMouseMove);
  EXPECT_EQ(dispatched(moved, frame), "o1:512:0 r2:512:0 r1:512:0 ");
  frame.removeHandler(&recorder, kFirst, kMsgMouseMove);
  frame.removeHandler(&recorder, kSecond, kMsgButtonUp);
  Recorder meddler("m");
  meddler.action = [&] {
    frame.removeHandler(&meddler, kFirst, kMsgMouseMove);
    frame.removeHandler(&other, kFirst, kMsgMouseMove);
  };
  frame.addHandler(&meddler, kFirst, kMsgMouseMove);
  EXPECT_EQ(dispatched(moved, frame), "m1:512:0 r2:512:0 ");
  EXPECT_EQ(dispatched(moved, frame), "r2:512:0 ");
}

// Each of the events of a click, a key and a change of the focus may destroy the window.
TEST_F(Windows, MayBeDestroyedByAHandlerOfTheirEvent) {
  ui::bringUp(frame);
  for (const auto& [message, last] : {std::pair(kMsgButtonDown, "r1:513:0 "),
                                      {kMsgButtonUp, "r1:514:0 "},
                                      {kMsgMouseMove, "r1:512:0 "},
                                      {kMsgFocusIn, "r1:7:0 "},
                                      {kMsgKeyDown, "r1:256:120 "}}) {
    zWindow* pane = new NotingPane(&frame, frame.fill(), kStyleTabStop);
    frame.sizer()->update(nullptr);
    recorder.action = [&] { delete std::exchange(pane, nullptr); };
    pane->addHandler(&other, kFirst, message);
    pane->addHandler(&recorder, kFirst, message);
    Widget widget = pane->widget();
    ui::waitFor([&] { return ui::isViewable(widget); }, "the pane on the screen");
    if (message == kMsgFocusIn || message == kMsgKeyDown) {
      pane->takeFocus();
      ui::waitFor([&] { return pane == nullptr || ui::focusIs(widget); }, "the focus");
      ui::pressKey(XK_x);
    } else {
      ui::click(widget, 5, 5);
    }
    ui::waitFor([&] { return pane == nullptr; }, "the pane's end");
    ui::drain();
    EXPECT_THAT(noted(), testing::EndsWith(last));
  }
}

TEST_F(Windows, OfferKeysToHandlersThenToAcceleratorsThenToTheCharacterOperation) {
  NotingPane pane(&frame, frame.fill(), kStyleTabStop);
  ui::bringUp(frame);
  ui::focus(pane);
  pane.addPlainHandler(&recorder, kFirst, kMsgKeyDown);
  pane.addPlainHandler(&recorder, kSecond, kMsgKeyUp);
  frame.addHandler(&other, kSecond, kMsgCommand);
  zApp::instance()->loadAccelerators(1800);
  EXPECT_EQ(pressed(XK_x), "r1:256:120 character:258:120 r2:257:120 ");
  EXPECT_EQ(pressed(XK_F5), "r1:256:65474 r2:257:65474 ") << "a key without a character is none";
  // Control itself, too, goes down and up.
  EXPECT_EQ(pressed(XK_q, ui::kControl),
            "r1:256:65507 r1:256:17 o2:273:1003 r2:257:17 r2:257:65507 ");
  EXPECT_THAT(pressed(XK_1, ui::kControl | ui::kShift), testing::HasSubstr(":33 o2:273:"));
  const std::string asCharacter = "r1:256:65507 r1:256:17 character:258:17 r2:257:17 r2:257:65507 ";
  {
    const zApp::ModalScope modal;
    EXPECT_EQ(pressed(XK_q, ui::kControl), asCharacter);
  }
  recorder.taken = 1;
  EXPECT_EQ(pressed(XK_q, ui::kControl), "r1:256:65507 r1:256:17 r2:257:17 r2:257:65507 ");
  recorder.taken = 0;
  zApp::instance()->loadAccelerators(0);
  EXPECT_EQ(pressed(XK_q, ui::kControl), asCharacter);
}

// From the first exposure to the end in its own paint.
TEST_F(Windows, PaintWhatWaitsAtOnceButNotWhileLocked) {
  auto* pane = new NotingPane(&frame, frame.fill());
  noted();
  ui::bringUp(frame);
  ui::waitFor([&] { return pane->paints > 0; }, "the first paint");
  EXPECT_THAT(noted(), testing::MatchesRegex("[^r]*ready [^r]*"));
  for (const unsigned extent : {200, 120, 300}) {
    XResizeWindow(ui::display(), ui::windowOf(pane->widget()), extent, extent);
  }
  ui::drain();
  pane->paints = 0;
  EXPECT_EQ(noted(), "move:0:0 size:0:0 ") << "only the last of several sizes counts";
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

  pane->onPaint = [&] { delete std::exchange(pane, nullptr); };
  pane->invalidate(nullptr, 1);
  ui::waitFor([&] { return pane == nullptr; }, "the end of the pane");
  ui::drain();
}

TEST_F(Windows, GoWithTheirParentAndTheirWidgetsThroughTheLoop) {
  auto* parent = new RecordingPane(&frame, frame.fill());
  new RecordingPane(parent);
  ui::bringUp(frame);
  const Window window = ui::windowOf(parent->widget());
  auto latest = std::make_unique<TestFrame>();
  ui::bringUp(*latest);
  delete parent;
  latest.reset();
  EXPECT_EQ(ui::resource(frame.widget(), "numChildren"), 1) << "this may be its own event";
  ui::waitFor([&] { return !ui::isViewable(window); }, "the pane to disappear");
  ui::drain();
  EXPECT_EQ(frame.childById(1), nullptr);
  EXPECT_EQ(ui::resource(frame.widget(), "numChildren"), 0);
}

TEST_F(Windows, TakeTheFocusWithDelayButFromNoMenuAndTellAllAboveAndADoubleClickMayHitTwo) {
  NotingPane outer(&frame, frame.fill(), kStyleTabStop, 10);
  NotingPane board(&outer, nullptr, kStyleTabStop, 20);
  const auto half = [&] { return new zGravSizer(kGravityLeft, 100, board.sizer()); };
  NotingPane first(&board, half(), kStyleTabStop, 1);
  auto second = std::make_unique<NotingPane>(&board, half(), kStyleTabStop, 2);
  ui::bringUp(frame);
  ui::focus(*second);
  {
    const zApp::PostedMenu menu;
    EXPECT_FALSE(first.takeFocus()) << "the menu would go";
  }
  first.startFocusTimer();
  ui::waitForFocus(first.widget());
  EXPECT_EQ(pressed(XK_Tab), "character:258:9 focus:8:0 focus:7:0 20:1>2 10:1>2 ");

  const int usual = XtGetMultiClickTime(ui::display());
  XtSetMultiClickTime(ui::display(), 0);
  ui::click(first.widget(), 10, 10);
  EXPECT_EQ(noted(), "down:513:0 focus:8:0 focus:7:0 20:2>1 10:2>1 up:514:0 ");
  XtSetMultiClickTime(ui::display(), 1 << 30);
  ui::click(second->widget(), 10, 10);
  XtSetMultiClickTime(ui::display(), usual);
  EXPECT_EQ(noted(), "down:515:0 focus:8:0 focus:7:0 20:1>2 10:1>2 up:514:0 ");
  second.reset();
  ui::drain();
  EXPECT_EQ(noted(), "focus:7:0 20:0>1 10:0>1 ");
}

}  // namespace
