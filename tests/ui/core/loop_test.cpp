// The application's loop: timers, and who goes first.

#include <unistd.h>

#include <array>

#include "tests/support/basics.h"
#include "tests/ui/core/core_test.h"

#include <X11/Intrinsic.h>

namespace {

class Loop : public testing::Test {
 protected:
  Loop() {
    ui::bringUp(frame);
    ui::waitFor([&] { return pane.paints > 0; }, "the first paint");
    pane.paints = 0;
  }
  /// Puts one event into the queue, which has the pane painted; it is there when this returns.
  void postEvent() {
    pane.invalidate(nullptr, 1);
    XSync(ui::display(), False);
  }
  /// Runs the real event loop until `condition` holds.
  static void runUntil(const std::function<bool()>& condition) {
    const Deadline deadline(kAnswerTime);
    zApp::instance()->pumpWhile([&] { return !condition() && !deadline.hasPassed(); });
    ASSERT_TRUE(condition());
  }
  static void keepBusyFor(Milliseconds time) {
    for (const Deadline end(time); !end.hasPassed();) {
    }
  }

  TestFrame frame;
  RecordingPane pane{&frame, frame.fill()};
};

TEST_F(Loop, HandlesEventsBeforeTimersThatAreAlwaysDueButAFloodOfThemStarvesNone) {
  Recorder slow([] { keepBusyFor(Milliseconds(13)); });
  int runsAtEvent = 0;
  pane.onPaint = [&] { runsAtEvent = slow.runs; };
  auto timer = std::make_unique<zTimer>(&slow, &Recorder::run, 10);
  runUntil([&] { return slow.runs == 2; });
  postEvent();
  runUntil([&] { return runsAtEvent > 0; });
  EXPECT_LE(runsAtEvent, 3);
  pane.onPaint = [&] { postEvent(); };
  postEvent();
  Recorder waiting([] {});
  timer = std::make_unique<zTimer>(&waiting, &Recorder::run, 1, zTimer::kOnce);
  runUntil([&] { return waiting.runs == 1; });
}

TEST_F(Loop, FiresARepeatingTimerForPeriodsThatPassInItsHandlerOrALoopInsideUntilItDeletesIt) {
  constexpr Milliseconds kPeriod{20};
  std::unique_ptr<zTimer> timer;
  Recorder slow([&] {
    if (slow.runs == 1) {
      keepBusyFor(kPeriod + kPeriod / 4);
    } else if (slow.runs == 2) {
      runUntil([&] { return slow.runs >= 4; });
    } else if (slow.runs == 6) {
      timer.reset();
    }
  });
  const Deadline twoPeriods(2 * kPeriod);
  timer = std::make_unique<zTimer>(&slow, &Recorder::run, kPeriod.count());
  runUntil([&] { return slow.runs == 1; });
  EXPECT_TRUE(twoPeriods.hasPassed());
  EXPECT_NE(XtAppPending(ui::context()) & XtIMAlternateInput, 0U) << "the next firing is due";
  runUntil([&] { return timer == nullptr; });
}

/// What a timer that watches the pipe is to do.
zTimerPace pace = zTimerPace::kAsleep;
std::array<int, 2> watched{-1, -1};
constexpr zTimerWatch kWatch{[] { return pace; }, [] { return watched; }};

TEST_F(Loop, FiresAWatchingTimerAfterTheEventsWhileThereIsWorkAndLetsItSleepUntilItIsWoken) {
  constexpr unsigned long kHour = 3600000;
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const UniqueDescriptor near(ends[0]);
  const UniqueDescriptor far(ends[1]);
  watched = {-1, near.get()};
  Recorder owner([&] {
    EXPECT_EQ(pane.paints, owner.runs - 1) << "events go first";
    postEvent();
    pace = owner.runs < 3 ? zTimerPace::kAtOnce : zTimerPace::kAsleep;
    char byte = 0;
    EXPECT_TRUE(owner.runs != 4 || read(near.get(), &byte, 1) == 1);
  });
  pace = zTimerPace::kAtOnce;
  zTimer timer(&owner, &Recorder::run, kHour, kWatch);
  Recorder other([] {});
  const zTimer often(&other, &Recorder::run, 1);
  runUntil([&] { return owner.runs == 3 && other.runs > 3; });
  pace = zTimerPace::kAtOnce;
  const int before = other.runs;
  runUntil([&] { return other.runs > before + 6; });
  EXPECT_EQ(owner.runs, 3);
  ASSERT_EQ(write(far.get(), "!", 1), 1);
  runUntil([&] { return pane.paints == 4; });
  pace = zTimerPace::kPeriod;
  timer.lookAgain();
  runUntil([&] { return pane.paints == 5; });
  EXPECT_EQ(owner.runs, 5) << "and then in an hour";
}

}  // namespace
