// Commands that wait for an answer of the user, and what these commands are for.

#include "tester/commands/numbers.h"
#include "tests/unit/tester/debugger_fixture.h"

namespace tester {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr Answer kYesAnswer{AnswerKind::kYes};
constexpr Answer kNoAnswer{AnswerKind::kNo};
constexpr Answer kAcknowledgement{AnswerKind::kAcknowledged};

class QuestionTest : public DebuggerTest {
 protected:
  QuestionTest() {
    run("set-trace 0");
    allSignals = run("list-signal");
    EXPECT_EQ(lineCount(allSignals), 18);
    dialogue.confirmed.clear();
  }

  static std::ptrdiff_t lineCount(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
  }

  /// What is printed from now on.
  std::string answer(const Answer& reply) {
    dialogue.text.clear();
    debugger.takeAnswer(reply);
    return dialogue.text;
  }

  /// Makes the next transition of the first button send a signal to a party that does not live.
  void prepareError() {
    run("proceed-until 1");
    run("assign-variable Button:1 party Pedestrian:7");
    run("send Arrive Button:1 2");
    dialogue.confirmed.clear();
  }

  std::string allSignals;
};

TEST_F(QuestionTest, AsksOnlyWhenLinesAreLeft) {
  run("set-page-length 9");
  run("list-signal");
  EXPECT_EQ(lineCount(answer(kYesAnswer)), 9);
  EXPECT_EQ(dialogue.boxes.size(), 1U);
  for (const char* length : {"18", "19", "9223372036854775807", "0"}) {
    run("set-page-length " + std::string(length));
    EXPECT_EQ(run("list-signal"), allSignals);
  }
  EXPECT_EQ(dialogue.boxes.size(), 1U);
  EXPECT_THAT(run("set-page-length -1"), HasSubstr("no whole number from 0 up"));
}

TEST_F(QuestionTest, IgnoresAnswersThatFitNoOpenQuestion) {
  EXPECT_EQ(answer(kYesAnswer), "");
  run("set-page-length 10");
  run("list-signal");
  dialogue.confirmed.clear();
  EXPECT_EQ(answer(kAcknowledgement), "");
  EXPECT_THAT(dialogue.confirmed, IsEmpty());
  answer(kYesAnswer);
  EXPECT_EQ(answer(kYesAnswer), "");
  EXPECT_THAT(dialogue.confirmed, ElementsAre("list-signal"));
}

TEST_F(QuestionTest, BeginsAWaitingRunAfterTheAcknowledgement) {
  prepareError();
  run("go");
  debugger.execute("go");
  EXPECT_FALSE(debugger.isRunning());
  answer(kAcknowledgement);
  EXPECT_TRUE(debugger.isRunning());
}

TEST_F(QuestionTest, KeepsTheTransitionsFiredLastWhateverIsTraced) {
  EXPECT_EQ(run("list-history"), "No transition was fired yet.\n");
  run("next-transition 3");
  EXPECT_EQ(run("list-history 2"),
            "0.000  Controller:1    start    -> VehiclesGreen\n"
            "0.000  TrafficLight:1  start    -> Dark\n");
  EXPECT_EQ(lineCount(run("list-history")), 3);
  run("proceed-until 20000");
  run("set-page-length 0");
  EXPECT_EQ(lineCount(run("list-history")), 2000);
  EXPECT_THAT(run("list-history 0"), HasSubstr("no whole number from 1 up"));
  run("restart");
  EXPECT_EQ(run("list-history"), "No transition was fired yet.\n");
}

TEST_F(QuestionTest, WarnsOfWhatAResetLoses) {
  run("set-trace 2 Button");
  run("set-page-length 1");
  EXPECT_EQ(run("reset-system"), "The system stands at its start again.\n");
  EXPECT_THAT(dialogue.boxes, IsEmpty());
  EXPECT_THAT(run("list-trace"), HasSubstr("Button           1\n"));
  run("set-breakpoint Button");
  run("set-breakpoint Controller");
  run("send Press Button:1");
  run("reset-system");
  EXPECT_THAT(dialogue.boxes, ElementsAre("- Korvane - Reset system|Lost by the reset:\n"
                                          "2 breakpoints\n1 queued signal"));
  EXPECT_EQ(dialogue.confirmed.back(), "reset-system");
  EXPECT_EQ(run("list-breakpoint"), "No breakpoint is set.\n");
  EXPECT_EQ(run("list-queue"), "All queues are empty.\n");
}

TEST(NumbersTest, GroupDigitsByThree) {
  EXPECT_EQ(groupedNumber(0), "0");
  EXPECT_EQ(groupedNumber(999), "999");
  EXPECT_EQ(groupedNumber(1000), "1,000");
  EXPECT_EQ(groupedNumber(1234567), "1,234,567");
}

}  // namespace
}  // namespace tester
