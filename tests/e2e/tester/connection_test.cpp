// How the tester comes, greets and goes.

#include <fstream>
#include <sstream>

#include "support/version.h"
#include "tests/e2e/tester/tester_fixture.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr int kFailure = 1;
constexpr int kUsageError = 2;

TEST(TesterOptionsTest, AreAnsweredWithoutALink) {
  ChildProcess version({builtProgram("nelkv"), {"--version"}});
  EXPECT_EQ(version.exitStatus(), 0);
  EXPECT_EQ(version.output(), std::string("nelkv ") + kProductVersion + "\n");
  ChildProcess help({builtProgram("nelkv"), {"--help"}});
  EXPECT_EQ(help.exitStatus(), 0);
  EXPECT_THAT(help.output(), HasSubstr("--version"));
  for (const char* wrong : {"--fly", "-x", "word"}) {
    ChildProcess refused({builtProgram("nelkv"), {wrong}});
    EXPECT_EQ(refused.exitStatus(), kUsageError);
    EXPECT_EQ(refused.output(), "");
    EXPECT_THAT(refused.errors(), StartsWith("nelkv: "));
    EXPECT_THAT(refused.errors(), HasSubstr(wrong));
  }
}

TEST_F(TesterProcessTest, EndsWithAFailureWhenItIsRefused) {
  postmaster.start({builtProgram("nelkv")});
  postmaster.expectConnect();
  postmaster.deny();
  EXPECT_EQ(postmaster.exitStatus(), kFailure);
  EXPECT_THAT(postmaster.tool().errors(), HasSubstr("nelkv: no connection to the Postmaster"));
}

TEST_F(TesterProcessTest, GreetsAUserInterfaceThatComesLaterAndEachOneAfterIt) {
  connect(kAlone);
  uiComes();
  expectGreeting();
  uiLeaves();
  uiComes();
  expectGreeting();
  EXPECT_EQ(run("now"), "> now\nnow = 0.000\n");
}

TEST_F(TesterProcessTest, GreetsAUserInterfaceThatWasThereBeforeIt) {
  connect(kWithOthers);
  expectGreeting();
  EXPECT_EQ(run("now"), "> now\nnow = 0.000\n");
}

TEST_F(TesterProcessTest, GreetsWithTheFirstCommandOfAUserInterfaceThatNobodyAnnounced) {
  connect(kAlone);
  postmaster.send(MSG_UI_COMMAND, "now");
  const std::string text = postmaster.expect(MSG_T_TEXT).text();
  EXPECT_THAT(text, HasSubstr("\"Pedestrian Crossing\""));
  postmaster.expectLater(MSG_T_PROMPT, "now");
}

TEST_F(TesterProcessTest, LeavesInTheMiddleOfARunWhenTheUserInterfaceExits) {
  connectWithUi();
  startEndlessRun();
  postmaster.send(MSG_UI_EXIT);
  expectOrderlyEnd();
}

TEST_F(TesterProcessTest, FollowsAUserInterfaceThatItAskedToLeave) {
  connectWithUi();
  EXPECT_EQ(run("exit"), "> exit\n");
  postmaster.expect(MSG_T_EXIT_CONFIRM);
  uiLeaves();
  expectOrderlyEnd();
}

TEST_F(TesterProcessTest, AcknowledgesAShutdown) {
  connectWithUi();
  startEndlessRun();
  postmaster.send(MSG_SHUTDOWN, 1, 2, 3, 4);
  postmaster.expectLater(MSG_SHUTDOWN_ACK);
  EXPECT_EQ(postmaster.exitStatus(), 0);
}

TEST_F(TesterProcessTest, EndsWhenThePostmasterHangsUpDuringARun) {
  connectWithUi();
  startEndlessRun();
  postmaster.hangUp();
  EXPECT_EQ(postmaster.exitStatus(), 0);
}

TEST_F(TesterProcessTest, EndsWhenThePostmasterHangsUpWhileItSleeps) {
  connectWithUi();
  postmaster.hangUp();
  EXPECT_EQ(postmaster.exitStatus(), 0);
}

TEST_F(TesterProcessTest, SleepsWhileNothingHappensAlsoWithHalfAFrame) {
  constexpr Milliseconds kObserved{400};
  constexpr long kFewTicks = 10;
  const auto usedTicks = [this] {
    std::ifstream file("/proc/" + std::to_string(postmaster.tool().id()) + "/stat");
    std::string line;
    std::getline(file, line);
    std::istringstream fields(line.substr(line.rfind(')') + 1));
    constexpr int kFieldsBeforeTimes = 11;
    std::string skipped;
    for (int i = 0; i < kFieldsBeforeTimes; ++i) {
      fields >> skipped;
    }
    long user = 0;
    long system = 0;
    EXPECT_TRUE(fields >> user >> system);
    return user + system;
  };
  connectWithUi();
  const long before = usedTicks();
  postmaster.expectSilence(kObserved);
  postmaster.sendRaw("0000");
  postmaster.expectSilence(kObserved);
  EXPECT_LT(usedTicks() - before, kFewTicks);
}

}  // namespace
