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
  Owner slow([] { keepBusyFor(Milliseconds(13)); });
  int runsWhenHandled = 0;
  EventStream events([&] { runsWhenHandled = slow.runs; });
  const zTimer timer(&slow, &Owner::run, 10);
  ASSERT_TRUE(runLoopUntil([&] { return slow.runs == 2; }));
  events.post();
  ASSERT_TRUE(runLoopUntil([&] { return runsWhenHandled > 0; }));
  EXPECT_LE(runsWhenHandled, 3);
}

TEST(Loop, LetsATimerThroughAFloodOfEvents) {
  EventStream events([&] { events.post(); });
  Owner waiting;
  const zTimer timer(&waiting, &Owner::run, 1, zTimer::kOnce);
  events.post();
  EXPECT_TRUE(runLoopUntil([&] { return waiting.runs == 1; }));
}

/// The read end and the write end of a pipe.
std::array<UniqueDescriptor, 2> makePipe() {
  std::array<int, 2> ends{};
  EXPECT_EQ(pipe(ends.data()), 0);
  return {UniqueDescriptor(ends[0]), UniqueDescriptor(ends[1])};
}

TEST(Loop, PumpsWhatIsPendingThenSleepsUntilAnEventADescriptorOrItsTime) {
  auto [near, far] = makePipe();
  int handled = 0;
  EventStream events([&] { ++handled; });
  const auto sleptFor = [end = near.get()](int milliseconds) {
    const auto start = Clock::now();
    zApp::instance()->pumpPending(end, milliseconds);
    return Clock::now() - start >= Milliseconds(milliseconds);
  };
  ui::drain();
  handled = 0;
  events.post();
  events.post();
  EXPECT_TRUE(sleptFor(20));
  EXPECT_EQ(handled, 2);
  char byte = '!';
  ASSERT_EQ(write(far.get(), &byte, 1), 1);
  EXPECT_FALSE(sleptFor(10000));
  // An end that only says so would wake every wait.
  far.close();
  ASSERT_EQ(read(near.get(), &byte, 1), 1);
  EXPECT_TRUE(sleptFor(20));
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
  Owner late([&] { fired.emplace_back("late"); });
  Owner early([&] { fired.emplace_back("early"); });
  std::unique_ptr<zTimer> ending;
  Owner ends([&] {
    fired.emplace_back("ends");
    ending.reset();
  });
  { const zTimer timer(&late, &Owner::run, 1, zTimer::kOnce); }
  const zTimer lateTimer(&late, &Owner::run, 40, zTimer::kOnce);
  const zTimer earlyTimer(&early, &Owner::run, 1, zTimer::kOnce);
  ending = std::make_unique<zTimer>(&ends, &Owner::run, 10);
  EXPECT_TRUE(earlyTimer.isPending());
  ASSERT_TRUE(runLoopUntil([&] { return fired.size() >= 3; }));
  EXPECT_THAT(fired, ElementsAre("early", "ends", "late"));
  EXPECT_FALSE(earlyTimer.isPending());
}

TEST(SlowTimers, TickTogetherOnABeat) {
  constexpr unsigned long kPeriod = 500;
  static constexpr Milliseconds kBeat{100};
  const auto sinceBeat = [] { return Clock::now().time_since_epoch() % kBeat; };
  bool isOtherDue = false;
  int ticks = 0;
  Owner owner([&] { isOtherDue |= ++ticks == 1 && isTimerPending(true); });
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

/// What a timer that watches a pipe is to do.
zTimerPace pace = zTimerPace::kAsleep;
std::array<int, 2> watched{-1, -1};
constexpr zTimerWatch kWatch{[] { return pace; }, [] { return watched; }};

TEST(WatchingTimer, FiresWithoutItsPeriodWhileThereIsWorkAndSleepsUntilItIsWoken) {
  constexpr unsigned long kHour = 3600000;
  const auto [near, far] = makePipe();
  watched = {-1, near.get()};
  int eventsHandled = 0;
  EventStream events([&] { ++eventsHandled; });
  Owner owner([&] {
    EXPECT_EQ(eventsHandled, owner.runs - 1) << "events go first";
    events.post();
    pace = owner.runs < 3 ? zTimerPace::kAtOnce : zTimerPace::kAsleep;
    char byte = 0;
    EXPECT_TRUE(owner.runs < 4 || read(near.get(), &byte, 1) == 1);
  });
  pace = zTimerPace::kAtOnce;
  const zTimer timer(&owner, &Owner::run, kHour, kWatch);
  const zTimer lost(&owner, &Owner::run, kHour, kWatch);
  Owner other;
  const zTimer often(&other, &Owner::run, 1);
  ASSERT_TRUE(runLoopUntil([&] { return owner.runs == 3 && other.runs > 3; }));
  pace = zTimerPace::kAtOnce;
  const int before = other.runs;
  ASSERT_TRUE(runLoopUntil([&] { return other.runs > before + 6; }));
  EXPECT_EQ(owner.runs, 3);
  ASSERT_EQ(write(far.get(), "!", 1), 1);
  EXPECT_TRUE(runLoopUntil([&] { return owner.runs == 4; }));
}

TEST(WatchingTimer, KeepsItsPeriodWhereThatIsAskedFor) {
  constexpr unsigned long kPeriod = 30;
  pace = zTimerPace::kPeriod;
  Owner owner;
  const auto start = Clock::now();
  const zTimer timer(&owner, &Owner::run, kPeriod, kWatch);
  EXPECT_TRUE(runLoopUntil([&] { return owner.runs == 3; }));
  EXPECT_GE(Clock::now() - start, Milliseconds(2 * kPeriod));
}

constexpr int kPassesPerRun = 101;

class IdleList : public testing::Test {
 protected:
  ~IdleList() override {
    // A work procedure that has lost its last item is dropped in its next pass.
    EXPECT_TRUE(runLoopUntil([&] { return workProcs().inUse() == before; }));
  }

  const int before = workProcs().inUse();
  const int addedBefore = workProcs().added;
  zIdleList list;
  std::vector<int> passes;
  Owner first{[&] { passes.push_back(workProcs().passes); }};
};

TEST_F(IdleList, RunsAllHandlersInTheirOrderOnceInEvery101PassesUnlessItIsDisabled) {
  Owner second([&] {
    EXPECT_EQ(second.runs, first.runs);
    EXPECT_EQ(passes.back(), workProcs().passes);
  });
  list.add(&first, &Owner::run);
  list.add(&second, &Owner::run);
  ASSERT_TRUE(runLoopUntil([&] { return passes.size() >= 3; }));
  EXPECT_EQ(passes[1] - passes[0], kPassesPerRun);
  EXPECT_EQ(passes[2] - passes[1], kPassesPerRun);
  EXPECT_EQ(second.runs, first.runs);

  list.setEnabled(false);
  const int runs = first.runs;
  const int start = workProcs().passes;
  ASSERT_TRUE(runLoopUntil([&] { return workProcs().passes > start + 3 * kPassesPerRun; }));
  EXPECT_EQ(first.runs, runs);
  list.setEnabled(true);
  EXPECT_TRUE(runLoopUntil([&] { return first.runs > runs; }));
  list.remove(&first, &Owner::run);
  list.remove(&second, &Owner::run);
}

TEST_F(IdleList, LosesAHandlerThatAnswersNonZeroAndTheWorkProcedureWithTheLastOne) {
  Owner twice([&] { twice.answer = twice.runs == 2 ? 1 : 0; });
  first.answer = 1;
  list.add(&first, &Owner::run);
  list.add(&twice, &Owner::run);
  EXPECT_EQ(workProcs().added, addedBefore + 1);
  ASSERT_TRUE(runLoopUntil([&] { return workProcs().inUse() == before; }));
  EXPECT_EQ(first.runs, 1);
  EXPECT_EQ(twice.runs, 2);
  EXPECT_TRUE(list.isEmpty());
  list.add(&first, &Owner::run);
  EXPECT_EQ(workProcs().added, addedBefore + 2);
  ASSERT_TRUE(runLoopUntil([&] { return workProcs().inUse() == before; }));
  EXPECT_EQ(first.runs, 2);
}

TEST_F(IdleList, HandlersMayRemoveAndAddThemselvesAndOthersInTheMiddleOfARun) {
  Owner removed;
  Owner remover(
      [&] {
        list.remove(&removed, &Owner::run);
        list.remove(&remover, &Owner::run);
      },
      1);
  Owner again([&] {
    passes.push_back(workProcs().passes);
    list.remove(&again, &Owner::run);
    list.add(&again, &Owner::run);
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
}

}  // namespace
