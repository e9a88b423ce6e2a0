#include <gmock/gmock.h>

#include "tester/engine/crossing_model.h"
#include "tests/unit/tester/toy_system.h"

namespace tester {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const InstanceId kFirst{"Clerk", 1};
const InstanceId kSecondClerk{"Clerk", 2};

class ToyTest : public testing::Test {
 protected:
  ToyTest() { runToRest(); }

  void runToRest() {
    while (system.prepare(kForever - 1)) {
      system.fire(trace);
    }
  }
  void send(const InstanceId& receiver, const std::string& signal, std::vector<Value> values = {}) {
    ASSERT_EQ(system.send(signal, receiver, std::move(values)), std::nullopt);
  }
  std::string state(const InstanceId& id) { return system.instance(id)->state; }
  std::int64_t count(const InstanceId& id) {
    return std::get<std::int64_t>(system.instance(id)->variables[0].value);
  }

  SimulatedSystem system{toyModel()};
  TraceRecorder trace;
};

TEST_F(ToyTest, KeepsASavedSignalUntilAStateTakesItAndThenInItsOldOrder) {
  send(kFirst, "Add", {std::int64_t{3}});
  send(kFirst, "Add", {std::int64_t{4}});
  EXPECT_EQ(system.prepare(kForever - 1), std::nullopt);
  ASSERT_EQ(system.queue(kFirst).size(), 2U);
  EXPECT_TRUE(system.queue(kFirst)[0].isSaved);
  send(kFirst, "OpenUp");
  send(kFirst, "Close");
  runToRest();
  // The saved signals come before the younger Close.
  EXPECT_EQ(count(kFirst), 7);
  EXPECT_EQ(state(kFirst), "Closed");
  EXPECT_THAT(system.queue(kFirst), IsEmpty());
}

TEST_F(ToyTest, ServesInstancesInTheOrderInWhichTheyBecameReady) {
  send(kSecondClerk, "OpenUp");
  send(kFirst, "OpenUp");
  send(kSecondClerk, "Close");
  trace.lines.clear();
  runToRest();
  EXPECT_THAT(trace.lines, ElementsAre(HasSubstr("Clerk:2            Closed: OpenUp"),
                                       HasSubstr("Clerk:1            Closed: OpenUp"),
                                       HasSubstr("Clerk:2            Open: Close")));
}

TEST_F(ToyTest, LetsTimeStandWhileSomethingIsReadyAndDeliversTimersOfOneMomentAsTheyWereSet) {
  send(kFirst, "Wait");
  runToRest();
  EXPECT_EQ(system.now(), 5 * kSecond);
  EXPECT_EQ(state(kFirst), "Open");  // Late came first, Later was discarded in Open
  EXPECT_THAT(trace.lines.back(), HasSubstr("Open: Later                  discarded"));
  ASSERT_EQ(system.setTimer(kFirst, "Later", 2 * kSecond), std::nullopt);
  ASSERT_EQ(system.setTimer(kSecondClerk, "Late", kSecond), std::nullopt);
  EXPECT_EQ(system.timers().front().owner, kSecondClerk);
  EXPECT_EQ(system.prepare(system.now()), std::nullopt);
  EXPECT_EQ(system.now(), 5 * kSecond);
}

TEST_F(ToyTest, SettingATimerAgainMovesItAndTakesItsSignalOutOfTheQueue) {
  ASSERT_EQ(system.setTimer(kFirst, "Late", kSecond), std::nullopt);
  ASSERT_EQ(system.setTimer(kFirst, "Late", 3 * kSecond), std::nullopt);
  ASSERT_EQ(system.timers().size(), 1U);
  ASSERT_TRUE(system.prepare(kForever - 1));
  EXPECT_EQ(system.queue(kFirst).size(), 1U);
  ASSERT_EQ(system.setTimer(kFirst, "Late", kSecond), std::nullopt);
  EXPECT_THAT(system.queue(kFirst), IsEmpty());
  EXPECT_THAT(system.ready(), IsEmpty());
  EXPECT_EQ(system.resetTimer(kFirst, "Late"), std::nullopt);
  EXPECT_THAT(*system.resetTimer(kFirst, "Late"), HasSubstr("not active"));
}

TEST_F(ToyTest, CreatesUpToTheMaximumAndForgetsTimersAndSignalsOfWhatStops) {
  send(kFirst, "Hire");
  send(kFirst, "Hire");
  runToRest();
  EXPECT_EQ(system.instances().size(), 3U);
  EXPECT_TRUE(system.instance(kFirst)->offspring.isNull());  // the second Hire found no room
  EXPECT_EQ(system.instance({"Clerk", 3})->parent, kFirst);
  ASSERT_EQ(system.setTimer({"Clerk", 3}, "Late", kSecond), std::nullopt);
  send({"Clerk", 3}, "Retire");
  send({"Clerk", 3}, "Hire");
  runToRest();
  EXPECT_EQ(system.instance({"Clerk", 3}), std::nullopt);
  EXPECT_THAT(system.timers(), IsEmpty());
  send(kFirst, "Hire");
  runToRest();
  EXPECT_TRUE(system.instance({"Clerk", 4})) << "numbers must not be used again";
}

TEST_F(ToyTest, RefusesWhatDoesNotFitItsDefinitionAndStopsAtTheEndOfASort) {
  EXPECT_THAT(*system.send("Add", kFirst, {true}), HasSubstr("is no Integer"));
  EXPECT_THAT(*system.setTimer(kFirst, "Tea", 1), HasSubstr("no timer Tea"));
  EXPECT_THAT(*system.assign(kFirst, "count", true), HasSubstr("Integer"));
  EXPECT_EQ(system.assign(kFirst, "count", INT64_MAX), std::nullopt);
  send(kFirst, "OpenUp");
  send(kFirst, "Add", {std::int64_t{1}});
  runToRest();
  EXPECT_EQ(count(kFirst), INT64_MAX);  // a sum stops at the end of its sort
}

TEST(CrossingTest, RepeatsTenThousandTransitionsToTheLetter) {
  const auto run = [](std::size_t transitions) {
    SimulatedSystem system{crossingModel()};
    TraceRecorder trace;
    trace.wantedLevel = TraceLevel::kDetails;
    for (std::size_t i = 0; i < transitions; ++i) {
      EXPECT_TRUE(system.prepare(kForever - 1));
      system.fire(trace);
      if (i % 97 == 0) {
        EXPECT_EQ(system.send("Arrive", {"Button", 1}, {std::int64_t{1}}), std::nullopt);
      }
    }
    return std::pair(trace.lines, system.instances().size());
  };
  const auto first = run(10000);
  EXPECT_EQ(first, run(10000));
  EXPECT_GT(first.first.size(), 20000U);
}

TEST(ValueTest, ReadsTimesAsWrittenAndNothingElse) {
  EXPECT_EQ(parseTime("12"), 12 * kSecond);
  EXPECT_EQ(parseTime("2.5"), 2500);
  EXPECT_EQ(parseTime("0.001"), 1);
  for (const char* wrong :
       {"", ".", "1.", ".5", "-1", "1.2345", "1e3", "1,5", "99999999999999999"}) {
    EXPECT_EQ(parseTime(wrong), std::nullopt) << wrong;
  }
  EXPECT_EQ(formatTime(62005), "62.005");
  EXPECT_LT(addTime(kForever - 2, kLongestDuration), kForever);
}

TEST(ValueTest, ReadsEachSortAsItWritesIt) {
  const Sort colour{"Colour", SortKind::kLiteral, {"Red", "Green"}};
  EXPECT_EQ(formatValue(*parseValue(colour, "gREEN")), "Green");
  EXPECT_EQ(parseValue(colour, "Blue"), std::nullopt);
  EXPECT_EQ(parseValue(booleanSort(), "TRUE"), Value(true));
  EXPECT_EQ(parseValue(integerSort(), "12x"), std::nullopt);
  EXPECT_EQ(parseValue(integerSort(), "99999999999999999999"), std::nullopt);
  EXPECT_EQ(parseValue(pidSort(), "Button:2"), Value(InstanceId{"Button", 2}));
  EXPECT_EQ(parseValue(pidSort(), "Button:0"), std::nullopt);
  EXPECT_EQ(formatParameters({std::int64_t{-1}, std::string("a b")}), "(-1, 'a b')");
}

}  // namespace
}  // namespace tester
