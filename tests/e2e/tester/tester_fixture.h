#pragma once

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

#include "tests/support/basics.h"
#include "tests/support/scripted_postmaster.h"

/// Count of connected tools that the Postmaster's 8000 names, the new one included.
inline constexpr int kAlone = 1;
inline constexpr int kWithOthers = 2;

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
