#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "tests/e2e/postmaster/played_tool.h"
#include "tests/e2e/postmaster/postmaster_fixture.h"

using testing::HasSubstr;

namespace {

/// The only child of the process `parent`.
pid_t childOf(pid_t parent) {
  const std::string id = std::to_string(parent);
  return std::stoi(readFile("/proc/" + id + "/task/" + id + "/children"));
}

/// How often a trace shows that a tool was ordered to end.
int ordersIn(const std::string& trace) {
  int count = 0;
  for (std::size_t at = 0; (at = trace.find("MSG_SHUTDOWN_NOW", at)) != std::string::npos; ++at) {
    ++count;
  }
  return count;
}

/// The signal mask that a line such as "SigIgn:" of /proc/PID/status gives.
unsigned long signalMask(const std::string& status, const std::string& line) {
  const std::size_t at = status.find(line);
  return at == std::string::npos ? ~0UL : std::stoul(status.substr(at + line.size()), nullptr, 16);
}

class SignalTest : public PostmasterTest, public testing::WithParamInterface<int> {};

}  // namespace

TEST_P(SignalTest, AsksAllToolsToLeaveAndEndsOnceTheyHave) {
  TestClient ui = tool(NELKVUI);
  mpm.signal(GetParam());

  EXPECT_EQ(ui.receiveTag(), MSG_SHUTDOWN);
  EXPECT_FALSE(exists(portFileName()));
  ui.directed(NELKVUI, NELMPM, MSG_SHUTDOWN_ACK);
  ui.hangUp();
  EXPECT_EQ(mpm.exitStatus(), 0);
}
INSTANTIATE_TEST_SUITE_P(AllSignals, SignalTest, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST_F(PostmasterTest, OrdersTheToolsToLeaveThatDoNotAnswer) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  mpm.signal(SIGINT);

  EXPECT_EQ(ui.receiveTag(), MSG_SHUTDOWN);
  ui.directed(NELKVUI, NELMPM, MSG_SHUTDOWN_ACK);
  EXPECT_EQ(kv.receiveTag(), MSG_SHUTDOWN);
  EXPECT_EQ(kv.receiveTag(), MSG_SHUTDOWN_NOW);
  kv.hangUp();
  // The one that answered was not ordered to go; it only hears that the other has gone.
  EXPECT_EQ(ui.receiveTag(), MSG_TOOL_LEFT);
  ui.hangUp();
  EXPECT_EQ(mpm.exitStatus(), 0);
}

TEST_F(PostmasterTest, EndsWhenTheUserInterfaceLeaves) {
  TestClient kv = tool(NELKV);
  TestClient ui = tool(NELKVUI);
  ui.directed(NELKVUI, NELMPM, MSG_DISCONNECT);

  EXPECT_EQ(kv.receiveTag(), MSG_TOOL_LEFT);
  EXPECT_EQ(kv.receiveTag(), MSG_SHUTDOWN);
  kv.directed(NELKV, NELMPM, MSG_SHUTDOWN_ACK);
  kv.hangUp();
  ui.hangUp();
  EXPECT_EQ(mpm.exitStatus(), 0);
  EXPECT_FALSE(exists(mpm.socketPath()));
}

TEST(ChildrenTest, AUserInterfaceThatCrashesEndsAllAndLeavesNoProcess) {
  NelmpmProcess mpm({"--tool", playedTool(NELKVUI, ToolManner::kCrashing), "--tool",
                     playedTool(NELKV, ToolManner::kObedient), "--trace", "-"});
  ASSERT_TRUE(mpm.isUp());
  TestClient gate(mpm.socketPath());
  ASSERT_EQ(gate.connectAs(NELGATE), MSG_CONNECT_OK);
  ASSERT_TRUE(waitUntil([&] {
    return mpm.output().find("NELMPM -> NELKVUI MSG_CONNECT_OK") != std::string::npos &&
           mpm.output().find("NELMPM -> NELKV MSG_CONNECT_OK") != std::string::npos;
  }));
  gate.directed(NELGATE, NELKVUI, MSG_TOOL_ACTIVE);

  EXPECT_EQ(gate.receiveTag(), MSG_TOOL_LEFT);
  EXPECT_EQ(gate.receiveTag(), MSG_SHUTDOWN);
  gate.hangUp();
  EXPECT_EQ(mpm.exitStatus(), 0);
  EXPECT_THAT(mpm.errors(), HasSubstr("was killed by signal 9"));
  EXPECT_THAT(mpm.output(), HasSubstr("NELKV -> NELMPM MSG_SHUTDOWN_ACK(7002)"));
  EXPECT_FALSE(exists(portFileName()));
}

TEST(ChildrenTest, AToolThatIgnoresEverythingIsKilled) {
  NelmpmProcess mpm({"--tool", playedTool(NELKVUI, ToolManner::kDeaf), "--trace", "-"});
  ASSERT_TRUE(mpm.isUp());
  ASSERT_TRUE(waitUntil([&] { return mpm.output().find("MSG_TOOL_ACTIVE") != std::string::npos; }));
  const pid_t tool = childOf(mpm.pid());
  mpm.signal(SIGTERM);
  ASSERT_TRUE(waitUntil([] { return !exists(portFileName()); }));
  // Each further signal brings the next step forward at once: two orders, then the kill.
  for (const int orders : {1, 2}) {
    mpm.signal(SIGTERM);
    ASSERT_TRUE(waitUntil([&] { return ordersIn(mpm.output()) == orders; }));
  }
  mpm.signal(SIGTERM);
  EXPECT_EQ(mpm.exitStatus(), 0);
  EXPECT_EQ(kill(tool, 0), -1);
}

TEST(ChildrenTest, AToolThatHasAnsweredMayTakeItsTime) {
  NelmpmProcess mpm({"--tool", playedTool(NELKVUI, ToolManner::kDeciding), "--trace", "-"});
  ASSERT_TRUE(waitUntil([&] { return mpm.output().find("MSG_CONNECT_OK") != std::string::npos; }));
  const pid_t tool = childOf(mpm.pid());
  mpm.signal(SIGINT);
  EXPECT_TRUE(mpm.complains("(process " + std::to_string(tool) +
                            "), which ends by itself; a further signal ends it at once"));
  EXPECT_EQ(kill(tool, 0), 0);
  mpm.signal(SIGINT);
  EXPECT_EQ(mpm.exitStatus(), 0);
}

TEST(ChildrenTest, TheUserIsToldOfAToolThatDies) {
  NelmpmProcess mpm({"--tool", playedTool(NELKV, ToolManner::kCrashing)});
  ASSERT_TRUE(mpm.complains("none of the tools is a user interface, so no window can come"));
  ASSERT_TRUE(mpm.isUp());
  TestClient window(mpm.socketPath());
  ASSERT_EQ(window.connectAs(NELKVUI), MSG_CONNECT_OK);
  window.broadcast(NELKVUI, MSG_TOOL_READY);
  EXPECT_EQ(window.receiveTag(), MSG_START_POLL_TIMER);
  EXPECT_EQ(window.receiveTag(), MSG_TOOL_LEFT);
  const auto box = window.receive();
  ASSERT_TRUE(box.has_value());
  EXPECT_EQ(box->header.tag, MSG_LINK_WARNING_BOX);
  EXPECT_THAT(box->payload, HasSubstr("was killed by signal 9."));
}

TEST(ChildrenTest, AToolThatCannotBeStartedEndsTheStart) {
  const TemporaryFolder scratch;
  const std::string broken = scratch.write("broken", "no program");
  std::filesystem::permissions(broken, std::filesystem::perms::owner_all);
  for (const std::string& name :
       {std::string("nel-no-such-tool"), (scratch / "missing").string(), broken}) {
    NelmpmProcess mpm({"--tool", "sleep 60", "--tool", name});
    EXPECT_EQ(mpm.exitStatus(), 1);
    EXPECT_THAT(mpm.errors(), HasSubstr("cannot start " + name));
    EXPECT_EQ(mpm.complaintCount(), 1);
    EXPECT_FALSE(exists(portFileName()));
  }
}

TEST(ChildrenTest, GivesUpWhenNoUserInterfaceCanComeAnyMore) {
  NelmpmProcess mpm(
      {"--tool", playedTool(NELKV, ToolManner::kObedient), "--tool", "sh -c 'sleep 0.2; exit 3'"});
  EXPECT_EQ(mpm.exitStatus(), 1);
  EXPECT_THAT(mpm.errors(), HasSubstr("sh (process"));
  EXPECT_THAT(mpm.errors(), HasSubstr("ended with status 3"));
  EXPECT_THAT(mpm.errors(), HasSubstr("no user interface came"));
}

TEST(ChildrenTest, ToolsInheritNoDescriptorAndNoSignalSetting) {
  const TemporaryFolder scratch;
  const std::string status = (scratch / "status").string();
  NelmpmProcess mpm({"--tool", "sh -c 'ls /proc/self/fd > " + (scratch / "fds").string() +
                                   "; grep Sig /proc/self/status > " + status +
                                   "; ls $XAPPLRESDIR > " + (scratch / "resources").string() +
                                   "'"});
  EXPECT_EQ(mpm.exitStatus(), 1);
  // The three standard ones, and the one with which ls reads the folder.
  EXPECT_EQ(readFile((scratch / "fds").string()), "0\n1\n2\n3\n");
  // Apart from the way to the X resource file.
  EXPECT_EQ(readFile((scratch / "resources").string()), "NEL2\n");
  const auto bit = [](int signal) { return 1UL << (signal - 1); };
  EXPECT_EQ(signalMask(readFile(status), "SigBlk:"), 0UL);
  EXPECT_EQ(signalMask(readFile(status), "SigIgn:") &
                (bit(SIGPIPE) | bit(SIGINT) | bit(SIGTERM) | bit(SIGCHLD)),
            0UL);
}
