// The order in which events are offered, and what handlers may do meanwhile.

#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>

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
};

class Dispatch : public ::testing::Test {
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

TEST_F(Dispatch, OffersToControlHandlersThenHandlersThenTheApplicationThenTheWindow) {
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

  child.addHandler(&recorder, kFirst, kMsgEnable);
  recorder.action = [&] { note(child.isEnabled() ? "enabled" : "disabled"); };
  child.disable();
  child.enable();
  EXPECT_EQ(noted(), "r1:10:0 disabled r1:10:1 enabled ");
}

TEST_F(Dispatch, TheLatestHandlerRunsFirstAndHandlersMayBeRemovedInTheMiddleOfAWalk) {
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
TEST_F(Dispatch, AHandlerMayDestroyTheWindowOfTheEvent) {
  frame.bringUp();
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

TEST_F(Dispatch, KeysGoToHandlersThenToAcceleratorsThenToTheCharacterOperation) {
  NotingPane pane(&frame, frame.fill(), kStyleTabStop);
  frame.bringUp();
  pane.takeFocus();
  ui::waitForFocus(pane.widget());
  pane.addPlainHandler(&recorder, kFirst, kMsgKeyDown);
  pane.addPlainHandler(&recorder, kSecond, kMsgKeyUp);
  frame.addHandler(&other, kSecond, kMsgCommand);
  zApp::instance()->loadAccelerators(1800);
  EXPECT_EQ(pressed(XK_x), "r1:256:120 character:258:120 r2:257:120 ");
  EXPECT_EQ(pressed(XK_F5), "r1:256:65474 r2:257:65474 ") << "a key without a character is none";
  // Control itself, too, goes down and up.
  EXPECT_EQ(pressed(XK_q, ui::kControl),
            "r1:256:65507 r1:256:17 o2:273:1003 r2:257:17 r2:257:65507 ");
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

TEST_F(Dispatch, AQuickSecondPressIsADoubleClickAndAllWindowsAboveHearOfAChangeOfTheFocus) {
  NotingPane outer(&frame, frame.fill(), kStyleTabStop, 10);
  NotingPane board(&outer, nullptr, kStyleTabStop, 20);
  const auto half = [&] { return new zGravSizer(kGravityLeft, 100, board.sizer()); };
  const NotingPane first(&board, half(), kStyleTabStop, 1);
  auto second = std::make_unique<NotingPane>(&board, half(), kStyleTabStop, 2);
  EXPECT_EQ(board.childById(2), second.get());
  EXPECT_EQ(board.childById(9), nullptr);
  frame.bringUp();
  const Deadline longAgo(Milliseconds(250));
  ui::waitFor([&] { return longAgo.hasPassed(); }, "earlier presses to be long ago");
  noted();
  ui::click(first.widget(), 10, 10);
  EXPECT_THAT(noted(), testing::StartsWith("down:513:0 "));
  ui::click(second->widget(), 10, 10);
  EXPECT_EQ(noted(), "down:515:0 focus:8:0 focus:7:0 20:1>2 10:1>2 up:514:0 ")
      << "a double click also on another window";
  second.reset();
  ui::drain();
  EXPECT_THAT(noted(), testing::HasSubstr("10:0>"));
}

}  // namespace
