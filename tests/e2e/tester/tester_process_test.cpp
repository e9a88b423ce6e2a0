// The real tester with a scripted Postmaster: how it comes, greets and goes, and its dialogue with
// a user interface.

#include <gmock/gmock.h>

#include <ctime>
#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include "link/tool_message.h"
#include "support/version.h"
#include "tests/support/basics.h"
#include "tests/support/scripted_postmaster.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// Count of connected tools that the Postmaster's 8000 names, the new one included.
constexpr int kAlone = 1;
constexpr int kWithOthers = 2;

/// The real tester as the child of a scripted Postmaster.
class TesterProcessTest : public testing::Test {
 protected:
  /// Up to the Postmaster's answer to 9001.
  void connect(int tools = kAlone) {
    postmaster.start({builtProgram("nelkv")});
    EXPECT_EQ(postmaster.expectConnect().sender, NELKV);
    postmaster.send(MSG_CONNECT_OK, NELKV, 1, 1, tools, "scripted Postmaster");
    EXPECT_EQ(postmaster.expect(MSG_TOOL_READY).kind, kFrameUndirected);
    postmaster.send(MSG_START_POLL_TIMER);
  }

  void uiComes() {
    const Message ready{kFrameUndirected, MSG_TOOL_READY, NELKVUI, 0, {}, {}};
    postmaster.sendRaw(toWire(ready, MessageDirection::kSentByUi));
  }

  void uiLeaves() { postmaster.send(MSG_TOOL_LEFT, NELKVUI, 1, "NELKVUI"); }

  void expectGreeting() {
    const Message text = postmaster.expect(MSG_T_TEXT);
    EXPECT_THAT(text.text(), testing::HasSubstr("\"Pedestrian Crossing\""));
    EXPECT_THAT(text.text(), testing::HasSubstr("\"?\?\" lists the commands"));
    EXPECT_EQ(text.dest, NELKVUI);
    const Message opened = postmaster.expect(MSG_T_SYSTEM_OPENED);
    EXPECT_EQ(opened.text(), std::filesystem::current_path().string());
    postmaster.expect(MSG_T_TITLE);
  }

  void connectWithUi() {
    connect();
    uiComes();
    expectGreeting();
  }

  /// Carries out a command that answers with one text; the text.
  std::string run(const std::string& command) {
    postmaster.send(MSG_UI_COMMAND, command);
    std::string text = postmaster.expect(MSG_T_TEXT).text();
    postmaster.expectLater(MSG_T_PROMPT, command);
    return text;
  }

  /// Starts a run without an end and waits until it goes.
  void startEndlessRun() {
    postmaster.send(MSG_UI_COMMAND, "go");
    postmaster.expect(MSG_T_TEXT, "> go\n");
    postmaster.expect(MSG_T_BUSY);
    postmaster.expectLater(MSG_T_TITLE, "Pedestrian Crossing, running");
  }

  void expectOrderlyEnd() {
    postmaster.expectLater(MSG_DISCONNECT);
    EXPECT_EQ(postmaster.exitStatus(), 0);
  }

  ScriptedPostmaster postmaster;
};

TEST(TesterOptionsTest, AreAnsweredWithoutALink) {
  ChildProcess version({builtProgram("nelkv"), {"--version"}});
  EXPECT_EQ(version.exitStatus(), 0);
  EXPECT_EQ(version.output(), std::string("nelkv ") + kProductVersion + "\n");
  ChildProcess help({builtProgram("nelkv"), {"--help"}});
  EXPECT_EQ(help.exitStatus(), 0);
  EXPECT_THAT(help.output(), HasSubstr("--version"));
  for (const char* wrong : {"--fly", "-x", "word"}) {
    ChildProcess refused({builtProgram("nelkv"), {wrong}});
    EXPECT_EQ(refused.exitStatus(), 2);
    EXPECT_EQ(refused.output(), "");
    EXPECT_THAT(refused.errors(), StartsWith("nelkv: "));
    EXPECT_THAT(refused.errors(), HasSubstr(wrong));
  }
}

TEST_F(TesterProcessTest, EndsWithAFailureWhenItIsRefused) {
  postmaster.start({builtProgram("nelkv")});
  postmaster.expectConnect();
  postmaster.deny();
  EXPECT_EQ(postmaster.exitStatus(), 1);
  EXPECT_THAT(postmaster.tool().errors(), HasSubstr("nelkv: no connection to the Postmaster"));
}

TEST_F(TesterProcessTest, GreetsEachUserInterfaceAndEndsWhenThePostmasterHangsUp) {
  connect(kAlone);
  uiComes();
  expectGreeting();
  uiLeaves();
  uiComes();
  expectGreeting();
  EXPECT_EQ(run("now"), "> now\nnow = 0.000\n");
  postmaster.hangUp();
  EXPECT_EQ(postmaster.exitStatus(), 0);
}

TEST_F(TesterProcessTest, GreetsAUserInterfaceThatWasThereBeforeIt) {
  connect(kWithOthers);
  expectGreeting();
  EXPECT_EQ(run("now"), "> now\nnow = 0.000\n");
}

TEST_F(TesterProcessTest, GreetsWithTheFirstCommandOfAUserInterfaceThatNobodyAnnounced) {
  connect(kAlone);
  postmaster.send(MSG_UI_COMMAND, "now");
  EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), HasSubstr("\"Pedestrian Crossing\""));
  postmaster.expectLater(MSG_T_PROMPT, "now");
}

class TesterEndTest : public TesterProcessTest, public testing::WithParamInterface<int> {};
// 0 stands for the Postmaster's hanging up.
INSTANTIATE_TEST_SUITE_P(By, TesterEndTest, testing::Values(MSG_UI_EXIT, MSG_SHUTDOWN, 0));

TEST_P(TesterEndTest, EndsInTheMiddleOfARun) {
  connectWithUi();
  startEndlessRun();
  if (GetParam() == MSG_UI_EXIT) {
    postmaster.send(MSG_UI_EXIT);
    postmaster.expectLater(MSG_DISCONNECT);
  } else if (GetParam() == MSG_SHUTDOWN) {
    postmaster.send(MSG_SHUTDOWN, 1, 2, 3, 4);
    postmaster.expectLater(MSG_SHUTDOWN_ACK);
  } else {
    postmaster.hangUp();
  }
  EXPECT_EQ(postmaster.exitStatus(), 0);
}

TEST_F(TesterProcessTest, FollowsAUserInterfaceThatItAskedToLeave) {
  connectWithUi();
  EXPECT_EQ(run("exit"), "> exit\n");
  postmaster.expect(MSG_T_EXIT_CONFIRM);
  uiLeaves();
  expectOrderlyEnd();
}

TEST_F(TesterProcessTest, SleepsWhileNothingHappensAlsoWithHalfAFrame) {
  connectWithUi();
  clockid_t clock{};
  ASSERT_EQ(clock_getcpuclockid(postmaster.tool().id(), &clock), 0);
  const auto usedMilliseconds = [clock] {
    timespec used{};
    EXPECT_EQ(clock_gettime(clock, &used), 0);
    return used.tv_sec * 1000 + used.tv_nsec / 1'000'000;
  };
  const long before = usedMilliseconds();
  postmaster.expectSilence(Milliseconds(400));
  postmaster.sendRaw("0000");
  postmaster.expectSilence(Milliseconds(400));
  EXPECT_LT(usedMilliseconds() - before, 100);
}

TEST_F(TesterProcessTest, ConfirmsEveryCommandAsTypedAfterItsText) {
  connectWithUi();
  postmaster.send(MSG_UI_COMMAND, "  LIST-PR  controller ");
  const Message text = postmaster.expect(MSG_T_TEXT);
  EXPECT_EQ(text.text(), "> LIST-PR  controller\nController:1  start  queue 0\n");
  EXPECT_EQ(text.sender, NELKV);
  EXPECT_EQ(text.kind, kFrameDirected);
  postmaster.expect(MSG_T_PROMPT, "LIST-PR  controller");
  // An empty command has text too: the user interface keeps waiting pieces until some came.
  EXPECT_EQ(run(""), "> \n");
  // The longest that a frame holds; its echo needs two texts.
  const std::string longest(kMaxFrameBytes - kFrameHeaderBytes - sizeof(int), 'x');
  postmaster.send(MSG_UI_COMMAND, longest);
  std::string all;
  const std::string expected =
      "> " + longest + "\nUnknown command \"" + longest + "\". \"?\?\" lists the commands.\n";
  while (all.size() < expected.size()) {
    all += postmaster.expect(MSG_T_TEXT).text();
  }
  EXPECT_EQ(all, expected);
  postmaster.expect(MSG_T_PROMPT, longest);
  // Commands that come together or in pieces.
  const auto frame = [](const char* command) {
    return toWire({kFrameDirected, MSG_UI_COMMAND, NELKVUI, NELKV, {command}, {}},
                  MessageDirection::kSentByUi);
  };
  postmaster.sendRaw(frame("now") + frame("list-breakpoint"));
  postmaster.expect(MSG_T_TEXT, "> now\nnow = 0.000\n");
  postmaster.expect(MSG_T_PROMPT, "now");
  postmaster.expect(MSG_T_TEXT, "> list-breakpoint\nNo breakpoint is set.\n");
  postmaster.expect(MSG_T_PROMPT, "list-breakpoint");
  postmaster.sendFrameCutAt(17, MSG_UI_COMMAND, "now");
  postmaster.expect(MSG_T_TEXT, "> now\nnow = 0.000\n");
  postmaster.expect(MSG_T_PROMPT, "now");
}

TEST_F(TesterProcessTest, SendsTheTraceOfAnEndlessRunInBatchesUntilACommandEndsIt) {
  connectWithUi();
  startEndlessRun();
  for (int i = 0; i < 3; ++i) {
    const std::string batch = postmaster.expect(MSG_T_TEXT).text();
    EXPECT_GT(batch.size(), 16384 / 2);
    EXPECT_LT(batch.size(), 16384);
    EXPECT_THAT(batch, EndsWith("\n"));
  }
  postmaster.send(MSG_UI_COMMAND, "list-timer");
  postmaster.expectLater(MSG_T_PROMPT, "list-timer");
  postmaster.send(MSG_UI_COMMAND, "stop");
  postmaster.expectLater(MSG_T_IDLE);
  postmaster.expectLater(MSG_T_PROMPT, "go");
  postmaster.expect(MSG_T_TEXT, "> stop\n");
  postmaster.expect(MSG_T_PROMPT, "stop");
}

/// A command, the question that it leads to, an answer, and what is told then.
struct Exchange {
  std::string command;
  int question;
  int answer;
  std::optional<Parameter> parameter;
  std::string told;
};

TEST_F(TesterProcessTest, ReachesEveryMessageOfTheDialogue) {
  connectWithUi();
  run("set-breakpoint Button");
  run("set-breakpoint Controller");
  run("set-page-length 10");
  constexpr std::nullopt_t none = std::nullopt;
  std::set<int> reached{MSG_UI_COMMAND, MSG_T_TEXT, MSG_T_PROMPT, MSG_T_SYSTEM_OPENED, MSG_T_TITLE};
  for (const Exchange& row : std::initializer_list<Exchange>{
           {"list-signal", MSG_T_QUESTION, MSG_UI_OK, none, "Fault(Integer)\n"},
           {"list-signal", MSG_T_QUESTION, MSG_UI_NOT_OK, none, "Stopped; lines not shown: 7.\n"},
           {"assign-variable Controller cycles", MSG_T_ASK_STRING, MSG_UI_STRING, "9",
            "Controller:1 cycles := 9\n"},
           {"send Press Button", MSG_T_ASK_INTEGER, MSG_UI_VALUE, "2", "Press sent to Button:2\n"},
           {"show-instance", MSG_T_ASK_LIST, MSG_UI_LIST_CHOICE, "Controller:1",
            "Instance Controller:1 in start\n"},
           {"show-instance Button", MSG_T_ASK_RANGE, MSG_UI_VALUE, "*", "Instance Button:2"},
           {"remove-breakpoint", MSG_T_ASK_RANGE, MSG_UI_CANCEL, none, "Cancelled.\n"},
           {"mask-trace", MSG_T_ASK_BITS, MSG_UI_BITS, Parameter::List{"Button", "Controller"},
            "processes: Button, Controller\n"},
           {"send Arrive Button:1", MSG_T_ASK_SIGNAL_PARAM, MSG_UI_SIGNAL_PARAM, "7",
            "Arrive(7) sent to Button:1\n"},
           {"Change-Directory", MSG_T_ASK_DIRECTORY, MSG_UI_DIRECTORY, "/", "directory: /\n"},
           {"system", MSG_T_ASK_FILE, MSG_UI_CANCEL, none, "Cancelled.\n"}}) {
    SCOPED_TRACE(row.command);
    postmaster.send(MSG_UI_COMMAND, row.command);
    postmaster.expectLater(row.question);
    postmaster.send(MSG_UI_COMMAND, "now");  // waits for the answer
    if (row.parameter) {
      postmaster.send(row.answer, *row.parameter);
    } else {
      postmaster.send(row.answer);
    }
    EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), HasSubstr(row.told));
    postmaster.expect(MSG_T_PROMPT, row.command);
    postmaster.expect(MSG_T_TEXT, "> now\nnow = 0.000\n");
    postmaster.expect(MSG_T_PROMPT, "now");
    reached.insert({row.question, row.answer});
  }
  // Boxes, the run, the search and the end.
  postmaster.send(MSG_UI_COMMAND, "system");
  postmaster.expectLater(MSG_T_ASK_FILE);
  postmaster.send(MSG_UI_FILE, "/x/y");
  postmaster.expectLater(MSG_T_ERROR_BOX, "Korvane - Refused", "The file /x/y cannot be read.");
  postmaster.send(MSG_UI_ACK);
  postmaster.expect(MSG_T_PROMPT, "system");
  postmaster.send(MSG_UI_COMMAND, "restart");
  postmaster.expectLater(MSG_T_WARNING_BOX);
  postmaster.expectLater(MSG_T_PROMPT, "restart");
  postmaster.send(MSG_UI_COMMAND, "next-transition");
  postmaster.expectLater(MSG_T_BUSY);
  postmaster.expectLater(MSG_T_IDLE);
  postmaster.send(MSG_UI_FIND);
  while (postmaster.expectLater(MSG_T_FIND).number() != 0) {
  }
  postmaster.send(MSG_UI_CANCEL);
  postmaster.expect(MSG_T_TEXT, "Search cancelled.\n");
  run("exit");
  postmaster.expect(MSG_T_EXIT_CONFIRM);
  EXPECT_EQ(run("now"), "> now\nnow = 0.000\n");  // the user changed his mind
  run("quit");
  postmaster.expect(MSG_T_EXIT);
  postmaster.send(MSG_UI_EXIT);
  expectOrderlyEnd();
  reached.insert({MSG_UI_FILE, MSG_T_ERROR_BOX, MSG_UI_ACK, MSG_T_WARNING_BOX, MSG_T_BUSY,
                  MSG_T_IDLE, MSG_UI_FIND, MSG_T_FIND, MSG_T_EXIT_CONFIRM, MSG_T_EXIT,
                  MSG_UI_EXIT});
  for (const MessageRow& row : messageTable()) {
    if (row.tag <= MSG_T_ASK_RANGE) {
      EXPECT_TRUE(reached.contains(row.tag)) << row.name;
    }
  }
}

TEST_F(TesterProcessTest, ForgetsTheQuestionAndTheRunOfAUserInterfaceThatLeft) {
  connectWithUi();
  run("set-trace 0");
  postmaster.send(MSG_UI_COMMAND, "mask-trace");
  postmaster.expectLater(MSG_T_ASK_BITS);
  postmaster.send(MSG_UI_COMMAND, "set-breakpoint Button");
  uiLeaves();
  uiComes();
  expectGreeting();
  postmaster.send(MSG_UI_BITS, Parameter::List{"Button"});
  EXPECT_EQ(run("list-breakpoint"), "> list-breakpoint\nNo breakpoint is set.\n");
  startEndlessRun();
  uiLeaves();
  uiComes();
  expectGreeting();
  EXPECT_EQ(run("stop"), "> stop\nNo run is going on.\n");
}

}  // namespace
