// The real tester with a scripted Postmaster: how it comes, greets and goes, and its dialogue with
// a user interface.

#include <gmock/gmock.h>

#include "tests/support/scripted_postmaster.h"

namespace {

using testing::HasSubstr;

class Tester : public testing::Test {
 protected:
  /// Up to the Postmaster's answer to 9001; its 8000 counts the tools, the new one included.
  void connect(int tools) {
    postmaster.start(
        {builtProgram("nelkv"), {}, {"XDG_CONFIG_HOME=" + folder.path().string()}, folder.path()});
    postmaster.expectConnect();
    postmaster.send(MSG_CONNECT_OK, NELKV, 1, 1, tools, "scripted Postmaster");
    EXPECT_EQ(postmaster.expect(MSG_TOOL_READY).kind, kFrameUndirected);
    postmaster.send(MSG_START_POLL_TIMER);
  }
  void comes(int tool) {
    postmaster.sendRaw(wireText({kFrameUndirected, MSG_TOOL_READY, tool, 0, 0}));
  }
  void leaves(int tool) { postmaster.send(MSG_TOOL_LEFT, tool, 1, "its name"); }
  void expectGreeting() {
    const Message text = postmaster.expect(MSG_T_TEXT);
    EXPECT_THAT(text.text(), HasSubstr("\"Pedestrian Crossing\""));
    EXPECT_EQ(std::pair(text.sender, text.dest), std::pair(int{NELKV}, int{NELKVUI}));
    postmaster.expect(MSG_T_SYSTEM_OPENED, buttons, "Pedestrian Crossing");
    EXPECT_NE(readFile(buttons + "/nelkv.btn"), "");
    postmaster.expect(MSG_T_TITLE, "Pedestrian Crossing, now 0.000");
  }
  void expectEnd(const std::string& command, const std::string& told) {
    EXPECT_EQ(postmaster.expect(MSG_T_TEXT).text(), "> " + command + "\n" + told);
    postmaster.expect(MSG_T_PROMPT, command);
  }
  void startEndlessRun() {
    postmaster.send(MSG_UI_COMMAND, "go");
    postmaster.expect(MSG_T_TEXT, "> go\n");
    postmaster.expect(MSG_T_BUSY);
    postmaster.expectLater(MSG_T_TITLE, "Pedestrian Crossing, running");
  }

  const TemporaryFolder folder;
  std::string buttons = folder / "korvane/crossing";
  ScriptedPostmaster postmaster;
};

TEST_F(Tester, GreetsEachUserInterfaceOnceForgetsWhatTheOneBeforeLeftAndEndsWithTheLink) {
  connect(1);
  comes(NELGATE);
  postmaster.send(MSG_UI_COMMAND, "mask-trace");  // of one that nobody announced
  expectGreeting();
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
  postmaster.expectLater(MSG_T_SYSTEM_OPENED);
  postmaster.expectLater(MSG_T_TITLE, "Pedestrian Crossing, running");
  leaves(NELKVUI);
  comes(NELKVUI);
  postmaster.expectLater(MSG_T_SYSTEM_OPENED);
  postmaster.expect(MSG_T_TITLE);
  postmaster.send(MSG_UI_COMMAND, "stop");
  expectEnd("stop", "No run is going on.\n");
  startEndlessRun();
  postmaster.hangUp();
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
      {kCommand, {" set-page-length  10 "}, kEnd, "\nset-page-length  10\n"},
      {kCommand, {"list-signal"}, {MSG_T_TEXT, MSG_T_QUESTION}, "> list-signal\n"},
      {MSG_UI_OK, {}, kEnd, "Fault(Integer)\n"},
      {kCommand, {"list-signal"}, {MSG_T_QUESTION}},
      {MSG_UI_NOT_OK, {}, kEnd, "Stopped; lines not shown: 7.\n"},
      {kCommand, {"assign-variable Controller cycles"}, {MSG_T_ASK_STRING}},
      {MSG_UI_STRING, {"9"}, kEnd, "cycles := 9\n"},
      {kCommand, {"send Press Button"}, {MSG_T_ASK_INTEGER}},
      {MSG_UI_VALUE, {"2"}, kEnd, "Press sent to Button:2\n"},
      {kCommand, {"show-instance"}, {MSG_T_ASK_LIST}},
      {MSG_UI_LIST_CHOICE, {"Controller:1"}, kEnd, "Instance Controller:1 in"},
      {kCommand, {"show-instance Button"}, {MSG_T_ASK_RANGE}},
      {kCommand, {"now"}, {}},  // waits for the answer
      {MSG_UI_VALUE, {"*"}, {MSG_T_TEXT, MSG_T_PROMPT, MSG_T_TEXT, MSG_T_PROMPT}, "Button:2"},
      {kCommand, {"mask-trace"}, {MSG_T_ASK_BITS}},
      {MSG_UI_BITS, {Parameter::List{"Button"}}, kEnd, "processes: Button\n"},
      {kCommand, {"send Arrive Button:1"}, {MSG_T_ASK_SIGNAL_PARAM}},
      {MSG_UI_SIGNAL_PARAM, {"7"}, kEnd, "Arrive(7) sent"},
      {kCommand, {"Change-Directory"}, {MSG_T_ASK_DIRECTORY}},
      {MSG_UI_DIRECTORY, {"/"}, kEnd, "directory: /\n"},
      {kCommand, {"system"}, {MSG_T_ASK_FILE}},
      {MSG_UI_FILE, {"/x/y"}, {MSG_T_TEXT, MSG_T_ERROR_BOX}, "The file /x/y cannot be read."},
      {MSG_UI_ACK, {}, {MSG_T_PROMPT}},
      {kCommand, {"restart"}, {MSG_T_TEXT, MSG_T_WARNING_BOX, MSG_T_PROMPT}},
      {kCommand, {"go"}, {MSG_T_TEXT, MSG_T_BUSY, MSG_T_TITLE, MSG_T_TEXT}, "> go\n"},
      {kCommand, {"stop"}, {MSG_T_IDLE, MSG_T_TITLE, MSG_T_PROMPT, MSG_T_TEXT, MSG_T_PROMPT}},
      {MSG_UI_FIND, {}, {MSG_T_FIND, MSG_T_FIND, MSG_T_FIND}},
      {MSG_UI_CANCEL, {}, {MSG_T_TEXT}, "Search cancelled.\n"},
      {kCommand, {"quit"}, {MSG_T_TEXT, MSG_T_PROMPT, MSG_T_EXIT}},
      {kCommand, {"now"}, kEnd},  // the user changed his mind
      {kCommand, {"exit"}, {MSG_T_TEXT, MSG_T_PROMPT, MSG_T_EXIT_CONFIRM}},
      {MSG_UI_EXIT, {}, {MSG_DISCONNECT}},
  };
  buttons = folder.write("nelkv.btn", ":A\n").parent_path();
  connect(2);
  expectGreeting();
  for (const auto& [sent, parameters, heard, told] : steps) {
    const Message message{kFrameDirected, sent, NELKVUI, NELKV, parameters};
    SCOPED_TRACE(describe(message));
    postmaster.sendRaw(toWire(message, MessageDirection::kSentByUi));
    std::string text;
    for (const int tag : heard) {
      text += postmaster.expectLater(tag).text() + "\n";
    }
    EXPECT_THAT(text, HasSubstr(told));
  }
  EXPECT_EQ(postmaster.exitStatus(), 0);
}

}  // namespace
