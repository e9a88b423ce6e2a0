#include "framework/core/timer.h"

#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <memory>
#include <vector>

#include "tests/support/unique_descriptor.h"
#include "tests/ui/app_object/event_stream.h"
#include "tests/ui/app_object/loop_helpers.h"

namespace {

using testing::ElementsAre;

TEST(Timer, FiresOnceOrRepeatedlyInTheOrderOfThePeriods) {
  std::vector<char> fired;
  Owner late([&] {
    fired.push_back('l');
    return 0;
  });
  Owner early([&] {
    fired.push_back('e');
    return 0;
  });
  Owner often([] { return 0; });
  const zTimer lateTimer(&late, &Owner::run, 40, zTimer::kOnce);
  const zTimer earlyTimer(&early, &Owner::run, 1, zTimer::kOnce);
  const zTimer repeating(&often, &Owner::run, 1);

  ASSERT_TRUE(runLoopUntil([&] { return fired.size() >= 2 && often.runs >= 5; }));
  const int runsSoFar = often.runs;
  ASSERT_TRUE(runLoopUntil([&] { return often.runs > runsSoFar + 3; }));

  EXPECT_THAT(fired, ElementsAre('e', 'l'));
  EXPECT_FALSE(earlyTimer.isPending());
  EXPECT_TRUE(repeating.isPending());
}

TEST(Timer, CountsTheNextPeriodWhileASlowHandlerStillRuns) {
  std::unique_ptr<zTimer> timer;
  bool wasPending = false;
  Owner slow([&] {
    wasPending = timer->isPending();
    return 0;
  });
  timer = std::make_unique<zTimer>(&slow, &Owner::run, 1);
  ASSERT_TRUE(runLoopUntil([&] { return slow.runs > 0; }));
  EXPECT_TRUE(wasPending);
}

TEST(Timer, MayBeDeletedByItsOwnHandlerAndBeforeItsTime) {
  Owner never([] { return 0; });
  { const zTimer timer(&never, &Owner::run, 1); }
  for (const zTimer::Repeat repeat : {zTimer::kOnce, zTimer::kRepeating}) {
    std::unique_ptr<zTimer> timer;
    Owner owner([&] {
      timer.reset();
      return 0;
    });
    timer = std::make_unique<zTimer>(&owner, &Owner::run, 1, repeat);
    ASSERT_TRUE(runLoopUntil([&] { return timer == nullptr; }));
    Owner later([] { return 0; });
    const zTimer afterwards(&later, &Owner::run, 10, zTimer::kOnce);
    ASSERT_TRUE(runLoopUntil([&] { return later.runs == 1; }));
    EXPECT_EQ(owner.runs, 1);
  }
  EXPECT_EQ(never.runs, 0);
}

TEST(Timer, GoesOnFiringInANestedLoopOfItsOwnHandler) {
  int innermost = 0;
  Owner owner([&] {
    if (owner.runs == 1) {
      runLoopUntil([&] { return owner.runs >= 4; });
      innermost = owner.runs;
    }
    return 0;
  });
  const zTimer timer(&owner, &Owner::run, 1);
  ASSERT_TRUE(runLoopUntil([&] { return innermost > 0; }));
  EXPECT_GE(innermost, 4);
}

/// Work for a timer that watches a pipe.
int workLeft = 0;
std::array<int, 2> watched{-1, -1};

constexpr zTimerWatch kWatch{
    [] { return workLeft > 0 ? zTimerPace::kAtOnce : zTimerPace::kAsleep; },
    [] { return watched; }};

TEST(Timer, WithAWatchFiresWithoutItsPeriodWhileThereIsWorkAndSleepsUntilItIsWoken) {
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
  Owner other([] { return 0; });
  const zTimer often(&other, &Owner::run, 1);
  ASSERT_TRUE(runLoopUntil([&] { return owner.runs == 3 && other.runs > 3; }));
  workLeft = 1;
  ASSERT_TRUE(runLoopUntil([&] { return other.runs > 10; }));
  EXPECT_EQ(owner.runs, 3);
  ASSERT_EQ(write(far.get(), "!", 1), 1);
  EXPECT_TRUE(runLoopUntil([&] { return owner.runs == 4; }));
  EXPECT_EQ(workLeft, 0);
}

}  // namespace
