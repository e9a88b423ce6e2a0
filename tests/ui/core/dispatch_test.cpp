// The order in which events are offered, and what handlers may do meanwhile.

#include "tests/ui/core/core_test.h"

#include <X11/keysym.h>

namespace {

constexpr int kId = 17;
constexpr int kCode = 5;

class Dispatch : public ::testing::Test {
 protected:
  /// What is written down while `event` is dispatched to `window`.
  std::string dispatched(zEvent event, zWindow& window) {
    journal.clear();
    zDispatch(event, &window);
    std::string all;
    for (const std::string& line : journal) {
      all += line + ", ";
    }
    return all;
  }
  Journal journal;
  TestFrame frame;
  Recorder recorder{journal, "r"};
  Recorder other{journal, "o"};
};

TEST_F(Dispatch, OffersToControlHandlersThenHandlersThenTheApplicationThenTheWindow) {
  RecordingPane pane(&frame, nullptr, journal);
  RecordingPane child(&pane, nullptr, journal, 0, kId);
  zNotifyNodeDlist& all = zApp::instance()->handlers();
  all.add(std::make_unique<zNotifyNode>(&recorder, toHandler(&Recorder::second), kMsgCommand));
  child.addParentHandler(&other, toHandler(&Recorder::first));
  child.addCtrlHandler(&recorder, toHandler(&Recorder::first), kCode);
  const auto command = [&](int id = kId, int code = kCode) {
    zEvent event = zEvent::of(kMsgCommand, id);
    event.lparam = code;
    return dispatched(event, pane);
  };
  EXPECT_EQ(command(), "r.first 273, o.first 273, r.second 273, command 273 17, ");
  EXPECT_EQ(command(kId, kCode + 1), "o.first 273, r.second 273, command 273 17, ");
  EXPECT_EQ(command(kId - 1), "r.second 273, command 273 16, ");
  EXPECT_EQ(command(kId + 1), "r.second 273, command 273 18, ");
  EXPECT_EQ(dispatched(zEvent::of(kMsgKeyUp, kId), pane), "");
  recorder.taken = 1;
  EXPECT_EQ(command(), "r.first 273, ");
  EXPECT_EQ(command(kId + 1), "r.second 273, ");
  recorder.taken = 0;

  all.remove(zEvent::of(kMsgCommand), &recorder, toHandler(&Recorder::second));
  child.removeCtrlHandler(&recorder, toHandler(&Recorder::first), kCode + 1);
  child.removeParentHandler(&other, toHandler(&Recorder::second));
  EXPECT_EQ(command(), "r.first 273, o.first 273, command 273 17, ");
  child.removeCtrlHandler(&recorder, toHandler(&Recorder::first), kCode);
  child.removeParentHandler(&other, toHandler(&Recorder::first));
  EXPECT_EQ(command(), "command 273 17, ");
}

TEST_F(Dispatch, TheLatestHandlerRunsFirstAndHandlersMayBeRemovedInTheMiddleOfAWalk) {
  const zEvent moved = zEvent::of(kMsgMouseMove);
  frame.addHandler(&recorder, toHandler(&Recorder::first), kMsgMouseMove);
  frame.addHandler(&recorder, toHandler(&Recorder::second), kMsgMouseMove);
  frame.addHandler(&other, toHandler(&Recorder::first), kMsgMouseMove);
  EXPECT_EQ(dispatched(moved, frame), "o.first 512, r.second 512, r.first 512, ");
  other.taken = 1;
  EXPECT_EQ(dispatched(moved, frame), "o.first 512, ");
  other.taken = 0;
  frame.removeHandler(&recorder, toHandler(&Recorder::first), kMsgMouseMove);
  frame.removeHandler(&recorder, toHandler(&Recorder::second), kMsgButtonUp);
  EXPECT_EQ(dispatched(moved, frame), "o.first 512, r.second 512, ");
  Recorder meddler(journal, "m");
  meddler.action = [&] {
    frame.removeHandler(&meddler, toHandler(&Recorder::first), kMsgMouseMove);
    frame.removeHandler(&other, toHandler(&Recorder::first), kMsgMouseMove);
  };
  frame.addHandler(&meddler, toHandler(&Recorder::first), kMsgMouseMove);
  EXPECT_EQ(dispatched(moved, frame), "m.first 512, r.second 512, ");
  EXPECT_EQ(dispatched(moved, frame), "r.second 512, ");
}

// Each of the events of a click, a key and a change of the focus may destroy the window.
TEST_F(Dispatch, AHandlerMayDestroyTheWindowOfTheEvent) {
  frame.bringUp();
  for (const int message :
       {kMsgButtonDown, kMsgButtonUp, kMsgMouseMove, kMsgFocusIn, kMsgKeyDown}) {
    SCOPED_TRACE(message);
    zWindow* pane = new RecordingPane(&frame, frame.fill(), journal, kStyleTabStop);
    frame.sizer()->update(nullptr);
    recorder.action = [&] { delete std::exchange(pane, nullptr); };
    other.action = [] { ADD_FAILURE() << "asked after the end of the window"; };
    pane->addHandler(&other, toHandler(&Recorder::first), message);
    pane->addHandler(&recorder, toHandler(&Recorder::first), message);
    Widget widget = pane->widget();
    ui::waitFor([&] { return ui::isViewable(widget); }, "the pane on the screen");
    if (message == kMsgFocusIn || message == kMsgKeyDown) {
      pane->startFocusTimer();
      ui::waitFor([&] { return pane == nullptr || ui::focusIs(widget); }, "the focus");
      ui::pressKey(XK_x);
    } else {
      ui::click(widget, 5, 5);
    }
    ui::waitFor([&] { return pane == nullptr; }, "the pane's end");
    ui::drain();
  }
  EXPECT_THAT(journal, testing::Not(testing::Contains("character 258 120")));
}

TEST_F(Dispatch, KeysGoToHandlersThenToAcceleratorsThenToTheCharacterOperation) {
  RecordingPane pane(&frame, frame.fill(), journal, kStyleTabStop);
  zApp::instance()->loadAccelerators(1800);
  frame.show();
  pane.startFocusTimer();
  ui::waitForFocus(pane.widget());
  pane.addPlainHandler(&recorder, toHandler(&Recorder::first), kMsgKeyDown);
  pane.addPlainHandler(&recorder, toHandler(&Recorder::second), kMsgKeyUp);
  frame.addHandler(&other, toHandler(&Recorder::second), kMsgCommand);
  const auto pressed = [&](ui::KeySymbol key, unsigned modifiers = ui::kNoModifier) {
    journal.clear();
    ui::pressKey(key, modifiers);
    std::erase(journal, "r.second 257");
    return journal;
  };
  const char* const down = "r.first 256";
  EXPECT_THAT(pressed(XK_x), ElementsAre(down, "character 258 120"));
  EXPECT_THAT(pressed(XK_F5), ElementsAre(down)) << "a key without a character is none";
  EXPECT_THAT(pressed(XK_q, ui::kControl), ElementsAre(down, down, "o.second 273"))
      << "Control itself, then the accelerator's command, and no character";
  {
    const zApp::ModalScope modal;
    EXPECT_THAT(pressed(XK_q, ui::kControl), ElementsAre(down, down, "character 258 17"));
  }
  EXPECT_EQ(zApp::instance()->loadAccelerators(0), 0);
  EXPECT_THAT(pressed(XK_q, ui::kControl), ElementsAre(down, down, "character 258 17"));
  EXPECT_EQ(zApp::instance()->loadAccelerators(1800), 1);
  recorder.taken = 1;
  EXPECT_THAT(pressed(XK_q, ui::kControl), ElementsAre(down, down));
  journal.clear();
  ui::pressKey(XK_y);
  EXPECT_THAT(journal, ElementsAre(down, "r.second 257"));
}

TEST_F(Dispatch, AQuickSecondPressIsADoubleClickEvenOnAnotherWindow) {
  RecordingPane left(&frame, new zGravSizer(kGravityLeft, 150, frame.sizer()), journal);
  RecordingPane right(&frame, frame.fill(), journal);
  frame.show();
  ui::waitFor([&] { return ui::isViewable(left.widget()) && ui::isViewable(right.widget()); },
              "both panes on the screen");
  const Deadline deadline(Milliseconds(250));
  ui::waitFor([&] { return deadline.hasPassed(); }, "earlier presses to be long ago");
  journal.clear();
  const auto clicked = [&](const zWindow& window) {
    const std::size_t before = journal.size();
    ui::click(window.widget(), 10, 10);
    ui::waitFor([&] { return journal.size() >= before + 2; }, "the click");
  };
  clicked(left);
  clicked(right);
  std::erase(journal, "moved 512 0");
  EXPECT_THAT(journal, ElementsAre("down 513 0", "up 514 0", "down 515 0", "up 514 0"));
}

TEST_F(Dispatch, AllWindowsAboveHearOfAChangeOfTheFocus) {
  RecordingPane outer(&frame, frame.fill(), journal, kStyleTabStop, 10);
  RecordingPane board(&outer, nullptr, journal, kStyleTabStop, 20);
  const auto half = [&] { return new zGravSizer(kGravityLeft, 100, board.sizer()); };
  auto first = std::make_unique<RecordingPane>(&board, half(), journal, kStyleTabStop, 1);
  RecordingPane second(&board, half(), journal, kStyleTabStop, 2);
  frame.bringUp();
  const auto heard = [&](RecordingPane& target) {
    journal.clear();
    target.startFocusTimer();
    ui::waitForFocus(target.widget());
    ui::drain();
    return journal;
  };
  heard(*first);
  EXPECT_THAT(heard(second), ElementsAre("focus 8 0", "focus 7 0", "20: 1 to 2", "10: 1 to 2"));
  heard(*first);
  journal.clear();
  first.reset();
  ui::drain();
  journal.clear();
  second.startFocusTimer();
  ui::waitFor([&] { return !journal.empty(); }, "the focus");
  EXPECT_THAT(journal, testing::Contains(testing::AnyOf("10: none to 2", "10: 2 to 2")));
}

TEST_F(Dispatch, TheFirstChildIsFoundByIdAndEnablingIsToldWithTheNewState) {
  const RecordingPane first(&frame, nullptr, journal, 0, 1);
  RecordingPane second(&frame, nullptr, journal, 0, 2);
  const RecordingPane third(&frame, nullptr, journal, 0, 2);
  EXPECT_EQ(frame.childById(2), &second);
  EXPECT_EQ(frame.childById(9), nullptr);
  second.addHandler(&recorder, toHandler(&Recorder::first), kMsgEnable);
  recorder.action = [&] { journal.push_back(second.isEnabled() ? "enabled" : "disabled"); };
  second.disable();
  second.enable();
  EXPECT_THAT(journal, ElementsAre("r.first 10", "disabled", "r.first 10", "enabled"));
}

}  // namespace
