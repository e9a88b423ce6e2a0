// The scripted Postmaster and the child processes themselves. The tool of these tests is this very
// test program, started anew with a role as its argument.

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <functional>
#include <string>

#include "link/tool_interface.h"
#include "link/typed_senders.h"
#include "tests/support/scripted_postmaster.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::HasSubstr;

Launch shell(const std::string& script) {
  return {"/bin/sh", {"-c", script}};
}

/// The text of the failure that `play` ends with; empty when it does not fail.
std::string failureOf(const std::function<void()>& play) {
  testing::TestPartResultArray results;
  const testing::ScopedFakeTestPartResultReporter reporter(
      testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &results);
  try {
    play();
  } catch (const testing::AssertionException&) {
    return results.GetTestPartResult(0).message();
  }
  return {};
}

TEST(ChildProcess, PassesArgumentsEnvironmentFolderAndStatus) {
  const TemporaryFolder folder;
  Launch launch = shell("pwd; echo $PPID $VALUE ${HOME-none}; echo problem >&2; exit 7");
  launch.environment = {"VALUE=a b", "HOME"};
  launch.workingFolder = folder.path();
  ChildProcess child(launch);
  EXPECT_EQ(child.exitStatus(), 7);
  EXPECT_EQ(child.output(),
            folder.path().string() + "\n" + std::to_string(::getpid()) + " a b none\n");
  EXPECT_EQ(child.errors(), "problem\n");
}

TEST(ChildProcess, ReportsSignalsAndProgramsThatDoNotExist) {
  EXPECT_EQ(ChildProcess(shell("kill -TERM $$")).exitStatus(), 128 + SIGTERM);
  ChildProcess missing(Launch{"/no/such/program"});
  EXPECT_EQ(missing.exitStatus(), 127);
  EXPECT_THAT(missing.errors(), HasSubstr("cannot start /no/such/program: No such file"));
}

TEST(ChildProcess, NeverBlocksOnWhatItPrints) {
  ChildProcess child(shell("yes | head -c 1000000"));
  EXPECT_EQ(child.exitStatus(), 0);
  EXPECT_EQ(child.output().size(), 1000000U);
}

TEST(ScriptedPostmaster, WaitsNoLongerThanTheToolLives) {
  ScriptedPostmaster postmaster;
  postmaster.start(shell("echo out of order >&2"));
  const std::string failure = failureOf([&] { postmaster.expectConnect(); });
  EXPECT_THAT(failure, HasSubstr("awaited: a connection and 7000 MSG_CONNECT"));
  EXPECT_THAT(failure, HasSubstr("ended without connecting"));
  EXPECT_THAT(failure, HasSubstr("out of order"));
}

TEST(ScriptedPostmaster, LeavesNoFileBehind) {
  std::string socketName;
  {
    const ScriptedPostmaster postmaster;
    socketName = postmaster.socketName();
    EXPECT_TRUE(postmaster.hasSocketName());
    EXPECT_EQ(::access(kPortFile.c_str(), R_OK), 0);
  }
  EXPECT_NE(::access(socketName.c_str(), F_OK), 0);
  EXPECT_NE(::access(kPortFile.c_str(), F_OK), 0);
}

/// A conversation with a tool that takes every text it is sent for a command and repeats it.
class Conversation : public testing::Test {
 protected:
  Conversation() {
    postmaster.start({builtProgram("nel_test_echo_tool")});
    EXPECT_EQ(postmaster.expectConnect().sender, NELKVUI);
    postmaster.accept("here");
    EXPECT_EQ(postmaster.expect(MSG_TOOL_READY).kind, kFrameUndirected);
  }

  ScriptedPostmaster postmaster;
};

TEST_F(Conversation, GoesBothWaysToAnOrderlyEnd) {
  postmaster.send(MSG_T_TEXT, "go \x01\xe4");
  const Message command = postmaster.expect(MSG_UI_COMMAND, "go \x01\xe4");
  EXPECT_EQ(command.dest, NELKV);
  EXPECT_EQ(command.text(), "go \x01\xe4");
  postmaster.send(MSG_T_ASK_BITS, "", "", Parameter::List{"one", "", "three"});
  EXPECT_EQ(postmaster.expectLater(MSG_UI_BITS).list(), (Parameter::List{"one", "", "three"}));
  postmaster.send(MSG_T_EXIT);
  postmaster.expect(MSG_DISCONNECT);
  postmaster.expectHangUp();
  EXPECT_EQ(postmaster.exitStatus(), 0);
  EXPECT_FALSE(postmaster.hasSocketName());
}

TEST_F(Conversation, CutsAFrameAnywhere) {
  for (const std::size_t cut : {1U, 40U, 41U, 59U}) {
    postmaster.sendFrameCutAt(cut, MSG_T_TEXT, "abc");
    postmaster.expect(MSG_UI_COMMAND, "abc");
  }
}

TEST_F(Conversation, NamesWhatWasAwaitedAndWhatCame) {
  postmaster.send(MSG_T_TEXT, "one");
  const std::string wrong = failureOf([&] { postmaster.expect(MSG_UI_COMMAND, "two"); });
  EXPECT_THAT(wrong, HasSubstr("awaited: 1002 MSG_UI_COMMAND \"two\""));
  EXPECT_THAT(wrong, HasSubstr("came: 1002 MSG_UI_COMMAND \"one\""));
  EXPECT_THAT(wrong, HasSubstr("> 2000 MSG_T_TEXT \"one\""));
  postmaster.expectSilence(Milliseconds{50});
}

TEST_F(Conversation, SurvivesTheToolsDeath) {
  postmaster.terminate();
  EXPECT_EQ(postmaster.exitStatus(), 128 + SIGKILL);
  EXPECT_THAT(failureOf([&] { postmaster.expect(MSG_UI_COMMAND); }),
              HasSubstr("closed the connection"));
  EXPECT_THAT(failureOf([&] { postmaster.send(MSG_T_TEXT, "x"); }), HasSubstr("Broken pipe"));
}

}  // namespace
