// Commands as the user interface sends them, and what comes back.

#include "tests/e2e/tester/tester_fixture.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::size_t kLargestText = 16384;

TEST_F(TesterProcessTest, AnswersWithTextAndThenConfirmsTheCommandAsTyped) {
  connectWithUi();
  postmaster.send(MSG_UI_COMMAND, "  L-P  controller ");
  const Message text = postmaster.expect(MSG_T_TEXT);
  EXPECT_EQ(text.text(), "> L-P  controller\nController:1  start  queue 0\n");
  EXPECT_EQ(text.sender, NELKV);
  EXPECT_EQ(text.kind, kFrameDirected);
  postmaster.expect(MSG_T_PROMPT, "L-P  controller");
}

TEST_F(TesterProcessTest, ConfirmsAlsoWhatItCannotDo) {
  connectWithUi();
  EXPECT_EQ(run("fly"), "> fly\nUnknown command \"fly\". \"?\?\" lists the commands.\n");
  EXPECT_THAT(run("set-trace"), HasSubstr("Too few arguments."));
  // An empty command has text too: the user interface keeps waiting pieces until some came.
  EXPECT_EQ(run(""), "> \n");
}

TEST_F(TesterProcessTest, SplitsALongListAtLineEnds) {
  constexpr int kSignals = 900;
  connectWithUi();
  run("set-page-length 0");
  for (int i = 0; i < kSignals; ++i) {
    run("send Arrive Button:1 " + std::to_string(i));
  }
  postmaster.send(MSG_UI_COMMAND, "list-queue");
  std::string all;
  std::string expected = "> list-queue\nButton:1 in start:\n";
  for (int i = 0; i < kSignals; ++i) {
    std::string signal = "Arrive(" + std::to_string(i) + ")";
    signal.resize(std::string("Arrive(100)").size(), ' ');
    expected += "  " + signal + "  from env\n";
  }
  while (all.size() < expected.size()) {
    const std::string text = postmaster.expect(MSG_T_TEXT).text();
    EXPECT_LT(text.size(), kLargestText);
    EXPECT_THAT(text, EndsWith("\n"));
    all += text;
  }
  EXPECT_EQ(all, expected);
  postmaster.expect(MSG_T_PROMPT, "list-queue");
}

TEST_F(TesterProcessTest, TakesTheLongestCommandThatAFrameHolds) {
  constexpr std::size_t kLongest = kMaxFrameBytes - kFrameHeaderBytes - sizeof(int);
  const std::string command(kLongest, 'x');
  connectWithUi();
  postmaster.send(MSG_UI_COMMAND, command);
  std::string all;
  const std::string expected =
      "> " + command + "\nUnknown command \"" + command + "\". \"?\?\" lists the commands.\n";
  while (all.size() < expected.size()) {
    const std::string text = postmaster.expect(MSG_T_TEXT).text();
    EXPECT_LT(text.size(), kLargestText);
    all += text;
  }
  EXPECT_EQ(all, expected);
  postmaster.expect(MSG_T_PROMPT, command);
}

TEST_F(TesterProcessTest, CarriesOutCommandsThatComeTogetherOrInPieces) {
  connectWithUi();
  const auto frame = [](const char* command) {
    return toWire({kFrameDirected, MSG_UI_COMMAND, NELKVUI, NELKV, {command}, {}},
                  MessageDirection::kSentByUi);
  };
  postmaster.sendRaw(frame("now") + frame("list-breakpoint") + frame(""));
  postmaster.expect(MSG_T_TEXT, "> now\nnow = 0.000\n");
  postmaster.expect(MSG_T_PROMPT, "now");
  postmaster.expect(MSG_T_TEXT, "> list-breakpoint\nNo breakpoint is set.\n");
  postmaster.expect(MSG_T_PROMPT, "list-breakpoint");
  postmaster.expect(MSG_T_TEXT, "> \n");
  postmaster.expect(MSG_T_PROMPT, "");
  postmaster.sendFrameCutAt(17, MSG_UI_COMMAND, "now");
  postmaster.expect(MSG_T_TEXT, "> now\nnow = 0.000\n");
  postmaster.expect(MSG_T_PROMPT, "now");
}

TEST_F(TesterProcessTest, IgnoresAnswersToQuestionsThatNobodyAsked) {
  connectWithUi();
  postmaster.send(MSG_UI_OK);
  postmaster.send(MSG_UI_NOT_OK);
  postmaster.send(MSG_UI_ACK);
  postmaster.send(MSG_UI_CANCEL);
  postmaster.send(MSG_UI_VALUE, "7");
  postmaster.send(MSG_UI_BITS, Parameter::List{"a"});
  EXPECT_EQ(run("now"), "> now\nnow = 0.000\n");
}

TEST_F(TesterProcessTest, FiresTransitionsAndShowsTheTimeInTheTitle) {
  connectWithUi();
  run("set-trace 0");
  postmaster.send(MSG_UI_COMMAND, "proceed-until 12.5");
  postmaster.expect(MSG_T_TEXT, "> proceed-until 12.5\n");
  postmaster.expect(MSG_T_BUSY);
  EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), EndsWith("now: 12.500.\n"));
  postmaster.expect(MSG_T_IDLE);
  postmaster.expect(MSG_T_TITLE, "Pedestrian Crossing, now 12.500");
  postmaster.expect(MSG_T_PROMPT, "proceed-until 12.5");
  EXPECT_EQ(run("list-timer"),
            "> list-timer\n"
            "Controller:1  Phase     at 15.000\n"
            "Supervisor:1  Watchdog  at 20.000\n");
}

TEST_F(TesterProcessTest, InterruptsAnEndlessRunWithTheNextCommandThatDoesMoreThanLook) {
  connectWithUi();
  run("set-trace 0");
  startEndlessRun();
  postmaster.send(MSG_UI_COMMAND, "list-timer");
  postmaster.expectLater(MSG_T_PROMPT, "list-timer");
  postmaster.send(MSG_UI_COMMAND, "set-page-length 7");
  EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), StartsWith("Interrupted; transitions: "));
  postmaster.expect(MSG_T_IDLE);
  postmaster.expectLater(MSG_T_PROMPT, "go");
  EXPECT_EQ(postmaster.expect(MSG_T_TEXT).text(), "> set-page-length 7\nPage length: 7 lines\n");
  postmaster.expect(MSG_T_PROMPT, "set-page-length 7");
}

TEST_F(TesterProcessTest, SendsTheTraceOfAnEndlessRunInBatches) {
  constexpr std::size_t kBatches = 3;
  connectWithUi();
  startEndlessRun();
  for (std::size_t i = 0; i < kBatches; ++i) {
    const std::string batch = postmaster.expect(MSG_T_TEXT).text();
    EXPECT_GT(batch.size(), kLargestText / 2);
    EXPECT_LT(batch.size(), kLargestText);
    EXPECT_THAT(batch, EndsWith("\n"));
  }
  postmaster.send(MSG_UI_COMMAND, "stop");
  postmaster.expectLater(MSG_T_PROMPT, "go");
  postmaster.expect(MSG_T_TEXT, "> stop\n");
  postmaster.expect(MSG_T_PROMPT, "stop");
}

TEST_F(TesterProcessTest, EndsARunWhoseUserInterfaceHasLeft) {
  connectWithUi();
  run("set-trace 0");
  startEndlessRun();
  uiLeaves();
  uiComes();
  expectGreeting();
  EXPECT_EQ(run("stop"), "> stop\nNo run is going on.\n");
}

}  // namespace
