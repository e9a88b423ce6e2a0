#include "tests/ui/app_object/loop_helpers.h"

#include "framework/core/application.h"
#include "tests/support/deadline.h"

bool runLoopUntil(const std::function<bool()>& condition) {
  constexpr unsigned long kTick = 5;
  Owner nobody([] { return 0; });
  // Idle passes alone do not make the loop look at its condition.
  const zTimer tick(&nobody, &Owner::run, kTick);
  const Deadline deadline(kAnswerTime);
  zApp::instance()->pumpWhile([&] { return !condition() && !deadline.hasPassed(); });
  return condition();
}
