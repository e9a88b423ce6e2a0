// The order in which events are offered, and what handlers may do meanwhile.

#include <gmock/gmock.h>
#include <X11/keysym.h>

#include "framework/core/application.h"
#include "tests/ui/core/recording.h"
#include "tests/ui/support/ui_test.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr int kId = 17;
constexpr int kCode = 5;
constexpr std::chrono::milliseconds kMultiClickTime{250};

class Dispatch : public ::testing::Test {
 protected:
  zEvent commandEvent(int id = kId, int code = kCode) {
    zEvent event = zEvent::of(kMsgCommand, id);
    event.lparam = code;
    return event;
  }

  Journal journal;
  TestFrame frame;
  Recorder recorder{journal, "r"};
  Recorder other{journal, "o"};
};

TEST_F(Dispatch, OffersToControlHandlersThenHandlersThenTheApplicationThenTheWindow) {
  RecordingPane pane(&frame, nullptr, journal);
  RecordingPane child(&pane, nullptr, journal, 0, kId);
  zApp::instance()->handlers().add(
      std::make_unique<zNotifyNode>(&recorder, toHandler(&Recorder::second), kMsgCommand));
  child.addParentHandler(&other, toHandler(&Recorder::first));
  child.addCtrlHandler(&recorder, toHandler(&Recorder::first), kCode);

  zEvent event = commandEvent();
  EXPECT_EQ(zDispatch(event, &pane), 0);
  EXPECT_THAT(journal, ElementsAre("r.first 273", "o.first 273", "r.second 273", "command 273 17"));

  journal.clear();
  event = commandEvent(kId, kCode + 1);
  zDispatch(event, &pane);
  EXPECT_THAT(journal, ElementsAre("o.first 273", "r.second 273", "command 273 17"));

  journal.clear();
  event = commandEvent(kId + 1);
  zDispatch(event, &pane);
  EXPECT_THAT(journal, ElementsAre("r.second 273", "command 273 18"));

  zApp::instance()->handlers().remove(zEvent::of(kMsgCommand), &recorder,
                                      toHandler(&Recorder::second));
  child.removeCtrlHandler(&recorder, toHandler(&Recorder::first), kCode);
  child.removeParentHandler(&other, toHandler(&Recorder::first));
  journal.clear();
  event = commandEvent();
  zDispatch(event, &pane);
  EXPECT_THAT(journal, ElementsAre("command 273 17"));
}

TEST_F(Dispatch, TheLatestHandlerRunsFirstAndMayStopTheOthers) {
  frame.addHandler(&recorder, toHandler(&Recorder::first), kMsgMouseMove);
  frame.addHandler(&other, toHandler(&Recorder::second), kMsgMouseMove);
  zEvent event = zEvent::of(kMsgMouseMove);
  EXPECT_EQ(zDispatch(event, &frame), 0);
  EXPECT_THAT(journal, ElementsAre("o.second 512", "r.first 512"));
  journal.clear();
  other.taken = 1;
  EXPECT_EQ(zDispatch(event, &frame), 1);
  EXPECT_THAT(journal, ElementsAre("o.second 512"));
}

TEST_F(Dispatch, RemovingABindingTakesOutTheOneOfThatTargetAndMember) {
  frame.addHandler(&recorder, toHandler(&Recorder::first), kMsgMouseMove);
  frame.addHandler(&recorder, toHandler(&Recorder::second), kMsgMouseMove);
  frame.addHandler(&other, toHandler(&Recorder::first), kMsgMouseMove);
  frame.removeHandler(&recorder, toHandler(&Recorder::first), kMsgMouseMove);
  frame.removeHandler(&recorder, toHandler(&Recorder::first), kMsgButtonUp);
  zEvent event = zEvent::of(kMsgMouseMove);
  zDispatch(event, &frame);
  EXPECT_THAT(journal, ElementsAre("o.first 512", "r.second 512"));
}

/// Does something to its window while it is being called.
class Meddler : public zEvH {
 public:
  Meddler(zWindow*& window, Recorder& recorder) : target(window), helper(recorder) {}

  int removeSelf(zEvent* /*event*/) {
    target->removeHandler(this, toHandler(&Meddler::removeSelf), kMsgMouseMove);
    return 0;
  }
  int removeOther(zEvent* /*event*/) {
    target->removeHandler(&helper, toHandler(&Recorder::first), kMsgMouseMove);
    return 0;
  }
  int destroyWindow(zEvent* /*event*/) {
    delete std::exchange(target, nullptr);
    return 0;
  }

 private:
  zWindow*& target;
  Recorder& helper;
};

TEST_F(Dispatch, AHandlerMayRemoveItselfOrTheNextOneInTheMiddleOfAWalk) {
  zWindow* window = &frame;
  Meddler meddler(window, recorder);
  frame.addHandler(&other, toHandler(&Recorder::second), kMsgMouseMove);
  frame.addHandler(&recorder, toHandler(&Recorder::first), kMsgMouseMove);
  frame.addHandler(&meddler, toHandler(&Meddler::removeOther), kMsgMouseMove);
  frame.addHandler(&meddler, toHandler(&Meddler::removeSelf), kMsgMouseMove);
  zEvent event = zEvent::of(kMsgMouseMove);
  zDispatch(event, &frame);
  EXPECT_THAT(journal, ElementsAre("o.second 512"));
}

TEST_F(Dispatch, AHandlerMayDestroyTheWindowOfTheEvent) {
  frame.show();
  zWindow* pane =
      new RecordingPane(&frame, new zGravSizer(kGravityFill, 0, frame.sizer()), journal);
  frame.sizer()->update(nullptr);
  Meddler meddler(pane, recorder);
  pane->addHandler(&recorder, toHandler(&Recorder::first), kMsgButtonDown);
  pane->addHandler(&meddler, toHandler(&Meddler::destroyWindow), kMsgButtonDown);
  Widget widget = pane->widget();
  ui::waitFor([&] { return ui::isViewable(widget); }, "the pane on the screen");
  ui::click(widget, 5, 5);
  ui::waitFor([&] { return pane == nullptr; }, "the click to destroy the pane");
  ui::drain();
  EXPECT_THAT(journal, IsEmpty());
}

TEST_F(Dispatch, KeysGoToHandlersThenToAcceleratorsThenToTheCharacterOperation) {
  RecordingPane pane(&frame, new zGravSizer(kGravityFill, 0, frame.sizer()), journal,
                     kStyleTabStop);
  zApp::instance()->loadAccelerators(1800);
  frame.show();
  pane.startFocusTimer();
  ui::waitForFocus(pane.widget());
  pane.addPlainHandler(&recorder, toHandler(&Recorder::first), kMsgKeyDown);
  journal.clear();

  ui::pressKey(XK_x);
  ui::pressKey(XK_F5);
  EXPECT_THAT(journal, ElementsAre("r.first 256", "character 258 120", "r.first 256"))
      << "a key without a character never reaches the character operation";

  journal.clear();
  frame.addHandler(&other, toHandler(&Recorder::second), kMsgCommand);
  ui::pressKey(XK_q, ui::kControl);
  EXPECT_THAT(journal, ElementsAre("r.first 256", "r.first 256", "o.second 273"))
      << "Control itself, then the accelerator's command, and no character";

  journal.clear();
  {
    const zApp::ModalScope modal;
    ui::pressKey(XK_q, ui::kControl);
  }
  zApp::instance()->loadAccelerators(0);
  ui::pressKey(XK_q, ui::kControl);
  EXPECT_THAT(journal, ::testing::Not(::testing::Contains("o.second 273")))
      << "silent in a modal dialog and without a table";

  zApp::instance()->loadAccelerators(1800);
  journal.clear();
  recorder.taken = 1;
  ui::pressKey(XK_q, ui::kControl);
  EXPECT_THAT(journal, ElementsAre("r.first 256", "r.first 256"));
}

TEST_F(Dispatch, AQuickSecondPressIsADoubleClickEvenOnAnotherWindow) {
  RecordingPane left(&frame, new zGravSizer(kGravityLeft, 150, frame.sizer()), journal);
  RecordingPane right(&frame, new zGravSizer(kGravityFill, 0, frame.sizer()), journal);
  frame.show();
  ui::waitFor([&] { return ui::isViewable(left.widget()) && ui::isViewable(right.widget()); },
              "both panes on the screen");
  const auto start = std::chrono::steady_clock::now();
  ui::waitFor([&] { return std::chrono::steady_clock::now() - start > kMultiClickTime; },
              "earlier presses to be long ago");
  journal.clear();
  ui::click(left.widget(), 10, 10);
  ui::click(right.widget(), 10, 10);
  ui::waitFor([&] { return journal.size() >= 4; }, "both clicks");
  EXPECT_THAT(journal, ElementsAre("down 513 0", "up 514 0", "down 515 0", "up 514 0"));
}

TEST_F(Dispatch, ChildrenAreFoundByIdAndSiblingsGoRound) {
  RecordingPane first(&frame, nullptr, journal, 0, 1);
  EXPECT_EQ(first.nextSibling(), &first);
  EXPECT_EQ(first.previousSibling(), &first);
  RecordingPane second(&frame, nullptr, journal, 0, 2);
  RecordingPane third(&frame, nullptr, journal, 0, 2);
  EXPECT_EQ(frame.childById(2), &second);
  EXPECT_EQ(frame.childById(9), nullptr);
  EXPECT_EQ(third.nextSibling(), &first);
  EXPECT_EQ(first.previousSibling(), &third);
  EXPECT_EQ(second.previousSibling(), &first);
  EXPECT_EQ(frame.nextSibling(), &frame);
  EXPECT_EQ(frame.defaultButton(), nullptr);
}

}  // namespace
