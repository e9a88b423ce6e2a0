#include "tests/ui/support/watchdog.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <memory>

#include "tests/support/deadline.h"
#include "tests/ui/support/ticker.h"
#include "tests/ui/support/wait.h"

namespace ui {

namespace {

constexpr Milliseconds kPeriod{50};
constexpr Milliseconds kLongestTest{30000};

class Watchdog : public testing::EmptyTestEventListener {
 public:
  void OnTestStart(const testing::TestInfo& /*test*/) override {
    const Deadline deadline(kLongestTest);
    ticker = std::make_unique<Ticker>(kPeriod, [deadline] {
      if (deadline.hasPassed()) {
        endHangingTest(Awaiting::describe());
      }
    });
  }

  void OnTestEnd(const testing::TestInfo& /*test*/) override { ticker.reset(); }

 private:
  std::unique_ptr<Ticker> ticker;
};

}  // namespace

void watchForHangs() {
  testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);
}

void endHangingTest(const std::string& awaited) {
  ADD_FAILURE() << "hangs in an event loop; awaited:\n" << awaited;
  const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
  if (test != nullptr) {
    std::cout << "[  FAILED  ] " << test->test_suite_name() << "." << test->name()
              << "\nThe loop cannot be left: this test program ends here.\n"
              << std::flush;
  }
  std::_Exit(EXIT_FAILURE);
}

}  // namespace ui
