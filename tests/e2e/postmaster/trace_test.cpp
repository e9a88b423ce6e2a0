#include <regex>

#include "support/version.h"
#include "tests/e2e/postmaster/postmaster_fixture.h"

TEST(TraceTest, WritesEachFrameWithItsTimeAsItGoesThrough) {
  const TemporaryFolder folder;
  const std::string file = folder / "trace";
  NelmpmProcess mpm({"--trace", file});
  ASSERT_TRUE(mpm.isUp());
  TestClient ui(mpm.socketPath());
  ASSERT_EQ(ui.connectAs(NELKVUI), MSG_CONNECT_OK);
  ui.broadcast(NELKVUI, MSG_TOOL_READY);
  ASSERT_EQ(ui.receiveTag(), MSG_START_POLL_TIMER);
  ui.directed(NELKVUI, NELKV, MSG_UI_COMMAND, wireString("say \"hi\"\n"));
  ASSERT_TRUE(mpm.complains("not connected"));

  const std::string time = R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} )";
  const std::vector<std::string> lines = {
      R"(NELKVUI -> NELMPM MSG_CONNECT\(7000\))",
      R"(NELMPM -> NELKVUI MSG_CONNECT_OK\(8000\) 2 \d+ \d+ 1 "NELMPM .*")",
      R"(NELKVUI -> \* MSG_TOOL_READY\(9001\))",
      R"(NELMPM -> NELKVUI MSG_START_POLL_TIMER\(9002\))",
      R"(NELKVUI -> NELKV MSG_UI_COMMAND\(1002\) "say \\"hi\\"\\n" \[refused: .*\])"};
  std::string pattern;
  for (const std::string& line : lines) {
    pattern += time + line + "\n";
  }
  // Another one that may not run leaves the file alone.
  EXPECT_EQ(NelmpmProcess({"--trace", file}).exitStatus(), 1);
  EXPECT_TRUE(std::regex_match(readFile(file), std::regex(pattern))) << readFile(file);
}

TEST(TraceTest, AFileThatCannotBeWrittenStopsTheStartButNotTheMessagesLater) {
  NelmpmProcess refused({"--trace", "/nowhere/trace"});
  EXPECT_EQ(refused.exitStatus(), 1);
  EXPECT_EQ(refused.errors(),
            "nelmpm: cannot write the trace to /nowhere/trace: No such file or directory\n");

  NelmpmProcess mpm({"--trace", "/dev/full"});
  ASSERT_TRUE(mpm.isUp());
  TestClient ui(mpm.socketPath());
  EXPECT_EQ(ui.connectAs(NELKVUI), MSG_CONNECT_OK);
  EXPECT_TRUE(mpm.complains("the trace cannot be written"));
  EXPECT_EQ(mpm.complaintCount(), 1);
}

TEST(CommandLineTest, AnswersQuestionsOnStandardOutputAndFaultsInOneLine) {
  NelmpmProcess version({"--version"});
  EXPECT_EQ(version.exitStatus(), 0);
  EXPECT_EQ(version.output(), std::string("nelmpm ") + kProductVersion + "\n");

  NelmpmProcess unknown({"--frobnicate"});
  EXPECT_EQ(unknown.exitStatus(), 2);
  EXPECT_THAT(unknown.errors(), testing::HasSubstr("--frobnicate"));
  EXPECT_EQ(unknown.complaintCount(), 1);
}
