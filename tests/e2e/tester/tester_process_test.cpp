// The real tester with a scripted Postmaster: how it comes, greets and goes, and its dialogue with
// a user interface.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "link/tool_message.h"
#include "tests/support/scripted_postmaster.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Count of connected tools that the Postmaster's 8000 names, the new one included.
constexpr int kAlone = 1;
constexpr int kWithOthers = 2;

class Tester : public testing::Test {
 protected:
  /// Up to the Postmaster's answer to 9001.
  void connect(int tools) {
    postmaster.start({builtProgram("nelkv")});
    postmaster.expectConnect();
    postmaster.send(MSG_CONNECT_OK, NELKV, 1, 1, tools, "scripted Postmaster");
    EXPECT_EQ(postmaster.expect(MSG_TOOL_READY).kind, kFrameUndirected);
    postmaster.send(MSG_START_POLL_TIMER);
  }
  void connectWithUi() {
    connect(kWithOthers);
    expectGreeting();
  }
  void comes(int tool) {
    postmaster.sendRaw(
        toWire({kFrameUndirected, MSG_TOOL_READY, tool, 0, {}, {}}, MessageDirection::kSentByUi));
  }
  void leaves(int tool) { postmaster.send(MSG_TOOL_LEFT, tool, 1, "its name"); }
  void expectGreeting() {
    const Message text = postmaster.expect(MSG_T_TEXT);
    EXPECT_THAT(text.text(), HasSubstr("\"Pedestrian Crossing\""));
    EXPECT_EQ(std::pair(text.sender, text.dest), std::pair(int{NELKV}, int{NELKVUI}));
    postmaster.expect(MSG_T_SYSTEM_OPENED, std::filesystem::current_path().string(),
                      "Pedestrian Crossing");
    postmaster.expect(MSG_T_TITLE, "Pedestrian Crossing, now 0.000");
  }
  /// A command that answers with one text.
  void run(const std::string& command, const std::string& told) {
    postmaster.send(MSG_UI_COMMAND, command);
    expectEnd(command, told);
  }
  void expectEnd(const std::string& command, const std::string& told) {
    EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), HasSubstr("> " + command + "\n" + told));
    postmaster.expect(MSG_T_PROMPT, command);
  }
  void startEndlessRun() {
    postmaster.send(MSG_UI_COMMAND, "go");
    postmaster.expect(MSG_T_TEXT, "> go\n");
    postmaster.expect(MSG_T_BUSY);
    postmaster.expectLater(MSG_T_TITLE, "Pedestrian Crossing, running");
  }

  ScriptedPostmaster postmaster;
};

TEST_F(Tester, FailsWhereItIsRefused) {
  postmaster.start({builtProgram("nelkv")});
  postmaster.expectConnect();
  postmaster.deny();
  EXPECT_EQ(postmaster.exitStatus(), 1);
  EXPECT_THAT(postmaster.tool().errors(), HasSubstr("nelkv: no connection to the Postmaster"));
}

TEST_F(Tester, GreetsEachUserInterfaceOnceAndForgetsWhatTheOneBeforeLeft) {
  connect(kAlone);
  comes(NELGATE);
  postmaster.send(MSG_UI_COMMAND, "set-trace 0");  // of one that nobody announced
  expectGreeting();
  expectEnd("set-trace 0", "Trace level 0");
  postmaster.send(MSG_UI_COMMAND, "mask-trace");
  postmaster.expectLater(MSG_T_ASK_BITS);
  postmaster.send(MSG_UI_COMMAND, "set-breakpoint Button");  // waits for the answer
  leaves(NELKVUI);
  postmaster.send(MSG_UI_COMMAND, "list-breakpoint");
  expectGreeting();
  expectEnd("list-breakpoint", "No breakpoint is set.\n");
  postmaster.send(MSG_UI_BITS, Parameter::List{"Button"});
  startEndlessRun();
  leaves(NELGATE);
  comes(NELKVUI);  // the same one with an empty log, or a next one
  EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), StartsWith("Tester of the simulated"));
  postmaster.expectLater(MSG_T_TITLE, "Pedestrian Crossing, running");
  leaves(NELKVUI);
  comes(NELKVUI);
  EXPECT_THAT(postmaster.expect(MSG_T_TEXT).text(), StartsWith("Tester of the simulated"));
  EXPECT_THAT(postmaster.expectLater(MSG_T_TITLE).text(), HasSubstr(", now "));
  run("stop", "No run is going on.\n");
}

class TesterEnd : public Tester, public testing::WithParamInterface<int> {};
// 0 stands for the Postmaster's hanging up, 8002 for a user interface that was asked to leave.
INSTANTIATE_TEST_SUITE_P(By, TesterEnd,
                         testing::Values(MSG_UI_EXIT, MSG_SHUTDOWN, MSG_TOOL_LEFT, 0));

TEST_P(TesterEnd, IsOrderlyAlsoInTheMiddleOfARun) {
  connectWithUi();
  if (GetParam() == MSG_TOOL_LEFT) {
    run("exit", "");
    postmaster.expect(MSG_T_EXIT_CONFIRM);
    leaves(NELKVUI);
    postmaster.expect(MSG_DISCONNECT);
  } else if (startEndlessRun(); GetParam() == MSG_UI_EXIT) {
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

/// What the user interface sends, what it hears then, and a part of the texts among that.
struct Step {
  int sent;
  std::vector<Parameter> parameters;
  std::vector<int> heard;
  std::string told = {};
};

TEST_F(Tester, ConfirmsEachCommandAndReachesEveryMessageOfTheDialogue) {
  constexpr int kCommand = MSG_UI_COMMAND;
  const std::vector<int> kEnd{MSG_T_TEXT, MSG_T_PROMPT};
  const Step steps[] = {
      // Every command is confirmed as typed after its text, and an empty one has text, too: the
      // user interface keeps waiting pieces until some came.
      {kCommand, {"  LIST-PR  controller "}, kEnd, "> LIST-PR  controller\nController:1  start"},
      {kCommand, {""}, kEnd, "> \n"},
      {kCommand, {"set-breakpoint Button"}, kEnd},
      {kCommand, {" set-page-length  10 "}, kEnd, "\nset-page-length  10\n"},
      {kCommand, {"list-signal"}, {MSG_T_TEXT, MSG_T_QUESTION}, "> list-signal\n"},
      {MSG_UI_OK, {}, kEnd, "Fault(Integer)\n"},
      {kCommand, {"list-signal"}, {MSG_T_TEXT, MSG_T_QUESTION}},
      {MSG_UI_NOT_OK, {}, kEnd, "Stopped; lines not shown: 7.\n"},
      {kCommand, {"assign-variable Controller cycles"}, {MSG_T_TEXT, MSG_T_ASK_STRING}},
      {MSG_UI_STRING, {"9"}, kEnd, "cycles := 9\n"},
      {kCommand, {"send Press Button"}, {MSG_T_TEXT, MSG_T_ASK_INTEGER}},
      {MSG_UI_VALUE, {"2"}, kEnd, "Press sent to Button:2\n"},
      {kCommand, {"show-instance"}, {MSG_T_TEXT, MSG_T_ASK_LIST}},
      {MSG_UI_LIST_CHOICE, {"Controller:1"}, kEnd, "Instance Controller:1 in"},
      {kCommand, {"show-instance Button"}, {MSG_T_TEXT, MSG_T_ASK_RANGE}},
      {MSG_UI_VALUE, {"*"}, kEnd, "Instance Button:2"},
      {kCommand, {"remove-breakpoint"}, {MSG_T_TEXT, MSG_T_ASK_RANGE}},
      {kCommand, {"now"}, {}},  // waits for the answer
      {MSG_UI_VALUE, {"1"}, kEnd, "Removed: 1 breakpoint.\n"},
      {kCommand, {"mask-trace"}, {MSG_T_TEXT, MSG_T_PROMPT, MSG_T_TEXT, MSG_T_ASK_BITS}, "> now\n"},
      {MSG_UI_BITS, {Parameter::List{"Button"}}, kEnd, "processes: Button\n"},
      {kCommand, {"send Arrive Button:1"}, {MSG_T_TEXT, MSG_T_ASK_SIGNAL_PARAM}},
      {MSG_UI_SIGNAL_PARAM, {"7"}, kEnd, "Arrive(7) sent"},
      {kCommand, {"Change-Directory"}, {MSG_T_TEXT, MSG_T_ASK_DIRECTORY}},
      {MSG_UI_DIRECTORY, {"/"}, kEnd, "directory: /\n"},
      {kCommand, {"system"}, {MSG_T_TEXT, MSG_T_ASK_FILE}},
      {MSG_UI_FILE, {"/x/y"}, {MSG_T_TEXT, MSG_T_ERROR_BOX}, "The file /x/y cannot be read."},
      {MSG_UI_ACK, {}, {MSG_T_PROMPT}},
      {kCommand, {"restart"}, {MSG_T_TEXT, MSG_T_WARNING_BOX, MSG_T_PROMPT}},
      {kCommand, {"go"}, {MSG_T_TEXT, MSG_T_BUSY, MSG_T_TITLE, MSG_T_TEXT}, "> go\n"},
      {kCommand, {"stop"}, {MSG_T_IDLE, MSG_T_TITLE, MSG_T_PROMPT, MSG_T_TEXT, MSG_T_PROMPT}},
      {MSG_UI_FIND, {}, {MSG_T_FIND, MSG_T_FIND, MSG_T_FIND}},
      {MSG_UI_CANCEL, {}, {MSG_T_TEXT}, "Search cancelled.\n"},
      {kCommand, {"exit"}, {MSG_T_TEXT, MSG_T_PROMPT, MSG_T_EXIT_CONFIRM}},
      {kCommand, {"now"}, kEnd},  // the user changed his mind
      {kCommand, {"quit"}, {MSG_T_TEXT, MSG_T_PROMPT, MSG_T_EXIT}},
      {MSG_UI_EXIT, {}, {MSG_DISCONNECT}},
  };
  connectWithUi();
  for (const Step& step : steps) {
    const Message message{kFrameDirected, step.sent, NELKVUI, NELKV, step.parameters, {}};
    SCOPED_TRACE(describe(message));
    postmaster.sendRaw(toWire(message, MessageDirection::kSentByUi));
    std::string text;
    for (const int tag : step.heard) {
      text += postmaster.expectLater(tag).text() + "\n";
    }
    EXPECT_THAT(text, HasSubstr(step.told));
  }
  for (const MessageRow& row : messageTable()) {
    const bool isReached = std::ranges::any_of(steps, [&](const Step& step) {
      return step.sent == row.tag || std::ranges::count(step.heard, row.tag) != 0;
    });
    EXPECT_TRUE(isReached || row.tag == MSG_T_SYSTEM_OPENED || row.tag > MSG_T_ASK_RANGE)
        << row.name;
  }
}

}  // namespace
