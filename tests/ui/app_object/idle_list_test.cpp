#include "framework/core/timer.h"

#include <gmock/gmock.h>

#include <vector>

#include "tests/ui/app_object/loop_helpers.h"
#include "tests/ui/app_object/work_procs.h"

namespace {

using testing::ElementsAre;

constexpr int kPassesPerRun = 101;

/// A work procedure that has lost its last item is dropped in its next pass.
bool runUntilNoWorkProcIsLeft(int before) {
  return runLoopUntil([&] { return workProcs().inUse() == before; });
}

TEST(IdleList, RunsAllHandlersInTheirOrderOnceInEvery101Passes) {
  zIdleList list;
  std::vector<int> passes;
  std::vector<char> order;
  Owner first([&] {
    passes.push_back(workProcs().passes);
    order.push_back('1');
    return 0;
  });
  Owner second([&] {
    EXPECT_EQ(passes.back(), workProcs().passes);
    order.push_back('2');
    return 0;
  });
  list.add(&first, &Owner::run);
  list.add(&second, &Owner::run);
  ASSERT_TRUE(runLoopUntil([&] { return passes.size() >= 3; }));
  EXPECT_EQ(passes[1] - passes[0], kPassesPerRun);
  EXPECT_EQ(passes[2] - passes[1], kPassesPerRun);
  order.resize(4);
  EXPECT_THAT(order, ElementsAre('1', '2', '1', '2'));
}

TEST(IdleList, RunsNothingWhileDisabled) {
  zIdleList list;
  Owner owner([] { return 0; });
  list.add(&owner, &Owner::run);
  list.setEnabled(false);
  const int start = workProcs().passes;
  ASSERT_TRUE(runLoopUntil([&] { return workProcs().passes > start + 3 * kPassesPerRun; }));
  EXPECT_EQ(owner.runs, 0);
  list.setEnabled(true);
  EXPECT_TRUE(runLoopUntil([&] { return owner.runs > 0; }));
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

TEST(IdleList, HandlersMayRemoveThemselvesAndOthersInTheMiddleOfARun) {
  zIdleList list;
  Owner removed([] { return 0; });
  Owner remover([&] {
    list.remove(&removed, &Owner::run);
    list.remove(&remover, &Owner::run);
    return 1;
  });
  Owner last([] { return 0; });
  list.add(&remover, &Owner::run);
  list.add(&removed, &Owner::run);
  list.add(&last, &Owner::run);
  ASSERT_TRUE(runLoopUntil([&] { return last.runs >= 2; }));
  EXPECT_EQ(remover.runs, 1);
  EXPECT_EQ(removed.runs, 0);
}

TEST(IdleList, AHandlerThatIsAddedAgainInItsOwnRunWaitsForTheNextOneAndKeepsTheWorkProcedure) {
  const int addedBefore = workProcs().added;
  const int before = workProcs().inUse();
  zIdleList list;
  std::vector<int> passes;
  Owner owner([&] {
    passes.push_back(workProcs().passes);
    list.remove(&owner, &Owner::run);
    list.add(&owner, &Owner::run);
    return 0;
  });
  list.add(&owner, &Owner::run);
  ASSERT_TRUE(runLoopUntil([&] { return passes.size() >= 3; }));
  EXPECT_EQ(passes[1] - passes[0], kPassesPerRun);
  EXPECT_EQ(workProcs().added, addedBefore + 1);

  // The same between two passes.
  list.remove(&owner, &Owner::run);
  list.add(&owner, &Owner::run);
  EXPECT_EQ(workProcs().added, addedBefore + 1);
  list.remove(&owner, &Owner::run);
  EXPECT_TRUE(runUntilNoWorkProcIsLeft(before));
}

}  // namespace
