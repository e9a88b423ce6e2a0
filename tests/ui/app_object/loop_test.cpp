#include <gmock/gmock.h>

#include <chrono>
#include <memory>

#include "tests/ui/app_object/event_stream.h"
#include "tests/ui/app_object/loop_helpers.h"

namespace {

TEST(Loop, HandlesAnEventAtOnceWhileATimerIsAlwaysDue) {
  Owner slow([] {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(13);
    while (std::chrono::steady_clock::now() < end) {
    }
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
  Owner waiting([] { return 0; });
  const zTimer timer(&waiting, &Owner::run, 1, zTimer::kOnce);
  events->post();
  EXPECT_TRUE(runLoopUntil([&] { return waiting.runs == 1; }));
}

}  // namespace
