// The application's loop: timers, idle handlers, and who goes first.

#include <sys/resource.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <memory>

#include "tests/support/basics.h"
#include "tests/ui/core/core_test.h"

namespace {

using Clock = std::chrono::steady_clock;

void keepBusyFor(Milliseconds time) {
  const auto end = Clock::now() + time;
  while (Clock::now() < end) {
  }
}

TEST(Loop, HandlesAnEventAtOnceWhileATimerIsAlwaysDue) {
  Owner slow([] {
    keepBusyFor(Milliseconds(13));
    return 0;
  });
  int runsWhenHandled = 0;
  EventStream events([&] { runsWhenHandled = slow.runs; });
  const zTimer timer(&slow, &Owner::run, 10);
  ASSERT_TRUE(runLoopUntil([&] { return slow.runs == 2; }));
  events.post();
  ASSERT_TRUE(runLoopUntil([&] { return runsWhenHandled > 0; }));
  EXPECT_LE(runsWhenHandled, 3);
}

TEST(Loop, LetsATimerThroughAFloodOfEvents) {
  std::unique_ptr<EventStream> events;
  events = std::make_unique<EventStream>([&] { events->post(); });
  Owner waiting;
  const zTimer timer(&waiting, &Owner::run, 1, zTimer::kOnce);
  events->post();
  EXPECT_TRUE(runLoopUntil([&] { return waiting.runs == 1; }));
}

TEST(Loop, PumpsWhatIsPendingThenSleepsUntilAnEventADescriptorOrItsTime) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const UniqueDescriptor near(ends[0]);
  UniqueDescriptor far(ends[1]);
  int handled = 0;
  EventStream events([&] { ++handled; });
  constexpr int kForEver = 10000;
  constexpr int kShort = 20;
  const auto sleepFor = [&](int descriptor, int milliseconds) {
    const auto start = Clock::now();
    zApp::instance()->pumpPending(descriptor, milliseconds);
    return Clock::now() - start;
  };
  ui::drain();
  handled = 0;
  events.post();
  events.post();
  EXPECT_GE(sleepFor(near.get(), kShort), Milliseconds(kShort));
  EXPECT_EQ(handled, 2);
  ASSERT_EQ(write(far.get(), "!", 1), 1);
  EXPECT_LT(sleepFor(near.get(), kForEver), Milliseconds(kForEver));
  // An end that only says so would wake every wait.
  far = UniqueDescriptor();
  char byte = 0;
  ASSERT_EQ(read(near.get(), &byte, 1), 1);
  EXPECT_GE(sleepFor(near.get(), kShort), Milliseconds(kShort));
}

/// Timers as they are, and as they are where the system has no descriptors left.
class Timer : public testing::TestWithParam<bool> {
 protected:
  std::unique_ptr<zTimer> make(Owner& owner, unsigned long period) {
    rlimit usual{};
    getrlimit(RLIMIT_NOFILE, &usual);
    if (!GetParam()) {
      const rlimit none{0, usual.rlim_max};
      setrlimit(RLIMIT_NOFILE, &none);
    }
    auto timer = std::make_unique<zTimer>(&owner, &Owner::run, period);
    setrlimit(RLIMIT_NOFILE, &usual);
    return timer;
  }
};
INSTANTIATE_TEST_SUITE_P(WithAndWithoutDescriptor, Timer, testing::Bool());

TEST_P(Timer, CountsThePeriodsThatPassInASlowHandlerAndFiresInItsNestedLoop) {
  constexpr unsigned long kPeriod = 20;
  Owner slow([&] {
    if (slow.runs == 1) {
      keepBusyFor(Milliseconds(kPeriod + 5));
    } else if (slow.runs == 2) {
      EXPECT_TRUE(runLoopUntil([&] { return slow.runs >= 4; }));
    }
    return 0;
  });
  const auto timer = make(slow, kPeriod);
  const auto start = Clock::now();
  EXPECT_TRUE(timer->isPending());
  ASSERT_TRUE(runLoopUntil([&] { return slow.runs == 1; }));
  EXPECT_GE(Clock::now() - start, Milliseconds(kPeriod + kPeriod));
  EXPECT_TRUE(isTimerPending(GetParam()))
      << "the next firing is due as soon as the handler is done";
  ASSERT_TRUE(runLoopUntil([&] { return slow.runs >= 6; }));
}

TEST(SingleTimer, FiresOnceAfterItsTimeAndMayBeDeletedBeforeOrByItsHandler) {
  Journal fired;
  Owner late([&] {
    fired.emplace_back("late");
    return 0;
  });
  Owner early([&] {
    fired.emplace_back("early");
    return 0;
  });
  Owner never;
  { const zTimer timer(&never, &Owner::run, 1, zTimer::kOnce); }
  std::unique_ptr<zTimer> ending;
  Owner ends([&] {
    ending.reset();
    return 0;
  });
  ending = std::make_unique<zTimer>(&ends, &Owner::run, 1);
  const zTimer lateTimer(&late, &Owner::run, 40, zTimer::kOnce);
  const zTimer earlyTimer(&early, &Owner::run, 1, zTimer::kOnce);
  EXPECT_TRUE(earlyTimer.isPending());
  ASSERT_TRUE(runLoopUntil([&] { return fired.size() >= 2; }));
  EXPECT_THAT(fired, ElementsAre("early", "late"));
  EXPECT_FALSE(earlyTimer.isPending());
  EXPECT_EQ(never.runs, 0);
  EXPECT_EQ(ends.runs, 1);
}

TEST(SlowTimers, TickTogetherOnABeat) {
  constexpr unsigned long kPeriod = 500;
  static constexpr Milliseconds kBeat{100};
  const auto sinceBeat = [] { return Clock::now().time_since_epoch() % kBeat; };
  bool isOtherDue = false;
  int ticks = 0;
  Owner owner([&] {
    isOtherDue |= ++ticks == 1 && isTimerPending(true);
    return 0;
  });
  std::unique_ptr<zTimer> first;
  std::unique_ptr<zTimer> second;
  do {
    keepBusyFor(std::chrono::ceil<Milliseconds>(kBeat - sinceBeat()));
    first = std::make_unique<zTimer>(&owner, &Owner::run, kPeriod);
    keepBusyFor(kBeat / 2);
    second = std::make_unique<zTimer>(&owner, &Owner::run, kPeriod);
  } while (sinceBeat() < kBeat / 2);
  zApp::instance()->pumpWhile([&] { return ticks < 2; });
  EXPECT_TRUE(isOtherDue);
}

/// Work for a timer that watches a pipe.
int workLeft = 0;
bool isPeriodic = false;
std::array<int, 2> watched{-1, -1};

constexpr zTimerWatch kWatch{[] {
                               return isPeriodic     ? zTimerPace::kPeriod
                                      : workLeft > 0 ? zTimerPace::kAtOnce
                                                     : zTimerPace::kAsleep;
                             },
                             [] { return watched; }};

TEST(WatchingTimer, FiresWithoutItsPeriodWhileThereIsWorkAndSleepsUntilItIsWoken) {
  constexpr unsigned long kHour = 3600000;
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  const UniqueDescriptor near(ends[0]);
  const UniqueDescriptor far(ends[1]);
  watched = {-1, near.get()};
  int eventsHandled = 0;
  EventStream events([&] { ++eventsHandled; });
  Owner owner([&] {
    EXPECT_EQ(eventsHandled, owner.runs - 1) << "events go first";
    events.post();
    --workLeft;
    char byte = 0;
    return owner.runs < 4 ? 0 : static_cast<int>(read(near.get(), &byte, 1));
  });
  workLeft = 3;
  const zTimer timer(&owner, &Owner::run, kHour, kWatch);
  const zTimer lost(&owner, &Owner::run, kHour, kWatch);
  Owner other;
  const zTimer often(&other, &Owner::run, 1);
  ASSERT_TRUE(runLoopUntil([&] { return owner.runs == 3 && other.runs > 3; }));
  workLeft = 1;
  const int before = other.runs;
  ASSERT_TRUE(runLoopUntil([&] { return other.runs > before + 6; }));
  EXPECT_EQ(owner.runs, 3);
  ASSERT_EQ(write(far.get(), "!", 1), 1);
  EXPECT_TRUE(runLoopUntil([&] { return owner.runs == 4; }));
  EXPECT_EQ(workLeft, 0);
}

TEST(WatchingTimer, KeepsItsPeriodWhereThatIsAskedFor) {
  constexpr unsigned long kPeriod = 30;
  isPeriodic = true;
  Owner owner;
  const auto start = Clock::now();
  const zTimer timer(&owner, &Owner::run, kPeriod, kWatch);
  EXPECT_TRUE(runLoopUntil([&] { return owner.runs == 3; }));
  EXPECT_GE(Clock::now() - start, Milliseconds(2 * kPeriod));
  isPeriodic = false;
}

constexpr int kPassesPerRun = 101;

/// A work procedure that has lost its last item is dropped in its next pass.
bool runUntilNoWorkProcIsLeft(int before) {
  return runLoopUntil([&] { return workProcs().inUse() == before; });
}

TEST(IdleList, RunsAllHandlersInTheirOrderOnceInEvery101PassesUnlessItIsDisabled) {
  zIdleList list;
  std::vector<int> passes;
  Journal order;
  Owner first([&] {
    passes.push_back(workProcs().passes);
    order.emplace_back("first");
    return 0;
  });
  Owner second([&] {
    EXPECT_EQ(passes.back(), workProcs().passes);
    order.emplace_back("second");
    return 0;
  });
  list.add(&first, &Owner::run);
  list.add(&second, &Owner::run);
  ASSERT_TRUE(runLoopUntil([&] { return passes.size() >= 3; }));
  EXPECT_EQ(passes[1] - passes[0], kPassesPerRun);
  EXPECT_EQ(passes[2] - passes[1], kPassesPerRun);
  order.resize(4);
  EXPECT_THAT(order, ElementsAre("first", "second", "first", "second"));

  list.setEnabled(false);
  const int runs = first.runs;
  const int start = workProcs().passes;
  ASSERT_TRUE(runLoopUntil([&] { return workProcs().passes > start + 3 * kPassesPerRun; }));
  EXPECT_EQ(first.runs, runs);
  list.setEnabled(true);
  EXPECT_TRUE(runLoopUntil([&] { return first.runs > runs; }));
}

TEST(IdleList, LosesAHandlerThatAnswersNonZeroAndTheWorkProcedureWithTheLastOne) {
  const int before = workProcs().inUse();
  const int addedBefore = workProcs().added;
  zIdleList list;
  Owner once([] { return 1; });
  Owner twice([&] { return twice.runs == 2 ? 1 : 0; });
  list.add(&once, &Owner::run);
  list.add(&twice, &Owner::run);
  EXPECT_EQ(workProcs().added, addedBefore + 1);
  ASSERT_TRUE(runUntilNoWorkProcIsLeft(before));
  EXPECT_EQ(once.runs, 1);
  EXPECT_EQ(twice.runs, 2);
  EXPECT_TRUE(list.isEmpty());

  list.add(&once, &Owner::run);
  EXPECT_EQ(workProcs().added, addedBefore + 2);
  ASSERT_TRUE(runUntilNoWorkProcIsLeft(before));
  EXPECT_EQ(once.runs, 2);
}

TEST(IdleList, HandlersMayRemoveAndAddThemselvesAndOthersInTheMiddleOfARun) {
  const int addedBefore = workProcs().added;
  const int before = workProcs().inUse();
  zIdleList list;
  std::vector<int> passes;
  Owner removed;
  Owner remover([&] {
    list.remove(&removed, &Owner::run);
    list.remove(&remover, &Owner::run);
    return 1;
  });
  Owner again([&] {
    passes.push_back(workProcs().passes);
    list.remove(&again, &Owner::run);
    list.add(&again, &Owner::run);
    return 0;
  });
  for (Owner* owner : {&remover, &removed, &again}) {
    list.add(owner, &Owner::run);
  }
  ASSERT_TRUE(runLoopUntil([&] { return passes.size() >= 3; }));
  EXPECT_EQ(passes[1] - passes[0], kPassesPerRun) << "what is added waits for the next run";
  EXPECT_EQ(remover.runs, 1);
  EXPECT_EQ(removed.runs, 0);

  // The last one leaves and another comes between two passes.
  list.remove(&again, &Owner::run);
  list.add(&again, &Owner::run);
  EXPECT_EQ(workProcs().added, addedBefore + 1);
  list.remove(&again, &Owner::run);
  EXPECT_TRUE(runUntilNoWorkProcIsLeft(before));
}

}  // namespace
