// The program nelmpm: clients that the test plays, and programs that it starts as tools.

#include <gmock/gmock.h>
#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

#include "frames/description.h"
#include "frames/message.h"
#include "link/port_control.h"
#include "postmaster/reports.h"
#include "support/version.h"
#include "tests/support/child_process.h"
#include "tests/support/connection.h"
#include "tests/support/message.h"
#include "tests/support/rendezvous.h"

namespace {

using testing::ContainsRegex;
using testing::HasSubstr;
namespace fs = std::filesystem;

template <class Condition>
bool waitUntil(Condition condition) {
  const Deadline deadline(kAnswerTime);
  while (!condition()) {
    if (deadline.hasPassed()) {
      return false;
    }
    poll(nullptr, 0, 2);
  }
  return true;
}

/// A tool that the test plays.
struct Client {
  explicit Client(const std::string& path) : connection(path) {}

  void send(std::string_view bytes) {
    EXPECT_TRUE(waitUntil([&] { return connection.send(bytes) != 0 || bytes.empty(); }));
  }
  void send(int sender, int dest, int tag, const std::string& payload = {}) {
    const int kind = dest == 0 ? kFrameUndirected : kFrameDirected;
    send(wireText({kind, tag, sender, dest, static_cast<int>(payload.size())}, payload));
  }
  /// The next message as the trace shows it; "the end" when there is none.
  std::string receive() {
    std::optional<std::string> frame;
    waitUntil([&] {
      connection.read();
      frame = connection.take();
      return frame || connection.hasEnded();
    });
    return frame ? frames::describeMessage(*frames::parseText(*frame + '\0').message) : "the end";
  }

  Connection connection;
};

class PostmasterTest : public testing::Test {
 protected:
  // What this program inherited must not reach the programs under test.
  PostmasterTest() { close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC); }

  /// Starts the Postmaster and waits until it listens.
  void start(std::vector<std::string> arguments = {}) {
    mpm.reset();
    mpm = std::make_unique<ChildProcess>(Launch{builtProgram("nelmpm"),
                                                std::move(arguments),
                                                {"XDG_CONFIG_HOME=" + scratch.path().string()}});
    EXPECT_TRUE(waitUntil([this] { return fs::exists(socketPath()); })) << mpm->report();
  }
  std::string socketPath() const { return socketFileName(port(), mpm->id()); }
  static int port() { return std::atoi(readFile(portFileName()).c_str()); }

  Client tool(int type) {
    Client client(socketPath());
    client.send(type, NELMPM, MSG_CONNECT);
    EXPECT_THAT(client.receive(), HasSubstr("MSG_CONNECT_OK"));
    return client;
  }

  RendezvousFolder folder;
  TemporaryFolder scratch;
  std::unique_ptr<ChildProcess> mpm;
};

TEST_F(PostmasterTest, PublishesItsNumberForItsOwnUserAndEndsInOrderOnEachSignal) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    start();
    EXPECT_EQ(readFile(portFileName()), std::to_string(port()) + "\n");
    const fs::path own = socketPath();
    EXPECT_EQ(fs::status(own).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    Client ui = tool(NELKVUI);
    Client kv = tool(NELKV);
    mpm->signal(signal);
    EXPECT_THAT(ui.receive() + kv.receive(), ContainsRegex("MSG_SHUTDOWN.* 2 .*MSG_SHUTDOWN.* 2 "));
    EXPECT_FALSE(fs::exists(own) || fs::exists(portFileName()));
    ui.send(NELKVUI, NELMPM, MSG_SHUTDOWN_ACK);
    ui.connection.close();
    EXPECT_THAT(kv.receive(), HasSubstr("MSG_TOOL_LEFT"));
    mpm->signal(signal);  // does not wait any longer for who does not answer
    EXPECT_EQ(kv.receive(), "NELMPM -> NELKV MSG_SHUTDOWN_NOW(13001)");
    kv.connection.close();
    EXPECT_EQ(mpm->exitStatus(), 0);
    EXPECT_EQ(mpm->errors(), "");
  }
}

TEST_F(PostmasterTest, LeavesALivingOneAloneAndReplacesADeadOne) {
  start();
  unlink(socketPath().c_str());  // as a tool that leaves does
  ChildProcess second(Launch{builtProgram("nelmpm")});
  EXPECT_EQ(second.exitStatus(), 1);
  EXPECT_THAT(second.errors(),
              HasSubstr("another Postmaster is running, port " + std::to_string(port())));
  start();
  mpm->kill();
  const std::string dead = socketPath();
  start();
  EXPECT_FALSE(fs::exists(dead));
}

TEST_F(PostmasterTest, CarriesFramesByTypeAndTellsWhoComesAndGoes) {
  start();
  Client kv = tool(NELKV);
  Client ui(socketPath());
  ui.send(NELKVUI, NELMPM, MSG_CONNECT);
  const std::string pid = std::to_string(mpm->id());
  EXPECT_EQ(ui.receive(), "NELMPM -> NELKVUI MSG_CONNECT_OK(8000) 2 " + pid + " " +
                              std::to_string(port()) + " 2 \"NELMPM " + kProductVersion +
                              " (PID=" + pid + ")\"");
  Client second(socketPath());
  second.send(NELKVUI, NELMPM, MSG_CONNECT);
  EXPECT_THAT(second.receive(), HasSubstr("MSG_CONNECT_DENIED(8001) 2 " + pid));
  EXPECT_EQ(second.receive(), "the end");
  Client gate = tool(NELGATE);

  ui.send(NELKVUI, NELKV, MSG_UI_COMMAND, wireString("go"));
  EXPECT_EQ(kv.receive(), "NELKVUI -> NELKV MSG_UI_COMMAND(1002) \"go\"");
  kv.send(NELKV, 0, MSG_TOOL_READY);
  EXPECT_EQ(ui.receive() + gate.receive() + kv.receive(),
            "NELKV -> * MSG_TOOL_READY(9001)NELKV -> * MSG_TOOL_READY(9001)"
            "NELMPM -> NELKV MSG_START_POLL_TIMER(9002)");
  kv.send(NELKV, NELKVUI, MSG_T_TEXT,
          wireString(std::string(kMaxReceivedFrameBytes - kFrameHeaderBytes - kWordBytes, 'x')));
  EXPECT_THAT(ui.receive(), testing::EndsWith("... 16409 bytes"));

  unlink(socketPath().c_str());
  gate.send(NELGATE, NELMPM, MSG_DISCONNECT);
  EXPECT_EQ(ui.receive(), "NELMPM -> NELKVUI MSG_TOOL_LEFT(8002) 3 1 \"NELGATE\"");
  gate.connection.close();
  EXPECT_TRUE(waitUntil([this] { return Connection(socketPath()).isOpen(); })) << "found again";
  kv.send("0000");
  kv.connection.close();
  EXPECT_EQ(ui.receive(), "NELMPM -> NELKVUI MSG_TOOL_LEFT(8002) 1 2 \"NELKV\"");
  mpm->expectText("hung up in the middle of a frame");
  Client next = tool(NELKV);
  ui.send(NELKVUI, NELMPM, MSG_DISCONNECT);
  EXPECT_THAT(next.receive(), HasSubstr("MSG_TOOL_LEFT"));
  EXPECT_THAT(next.receive(), HasSubstr("MSG_SHUTDOWN(13000) 1"));
  next.send(NELKV, NELMPM, MSG_SHUTDOWN_ACK);
  next.connection.close();
  ui.connection.close();
  EXPECT_EQ(mpm->exitStatus(), 0);
}

TEST_F(PostmasterTest, AFrameOfGarbageCostsOneLineAndIsForgotten) {
  start();
  Client ui = tool(NELKVUI);
  Client kv = tool(NELKV);
  const std::string good = wireText({kFrameDirected, MSG_T_BUSY, NELKV, NELKVUI, 0});
  const auto with = [](FrameHeader header) { return wireText(header, "payload"); };
  const std::pair<std::string, const char*> rows[] = {
      {"hello\n" + good, "characters that belong to no frame"},
      {good.substr(2), "shorter than a header"},
      {"0" + good, "half a byte"},
      {with({kFrameDirected, MSG_T_BUSY, NELKV, NELKVUI, 6}), "length word"},
      {with({2, MSG_T_BUSY, NELKV, NELKVUI, 7}), "neither directed nor undirected"},
      {with({kFrameDirected, MSG_T_BUSY, NELKV, NELGATE, 7}), "NELGATE, which is not connected"},
      {std::string(std::size_t{40} * kMaxFrameText, '0') + '\0', "longer than 32868 bytes"},
  };
  for (const auto& [bytes, complaint] : rows) {
    kv.send(bytes + good);
    mpm->expectText(complaint);
    EXPECT_EQ(ui.receive(), "NELKV -> NELKVUI MSG_T_BUSY(2014)") << complaint;
  }
}

TEST_F(PostmasterTest, StartsToolsWithNothingOfItsOwnAndEndsThemWithTheWindow) {
  start({"--tool", builtProgram("nelkv").string(), "--trace", "-", "--tool",
         "sh -c 'cd " + scratch.path().string() +
             "; (ls /proc/self/fd; ls $XAPPLRESDIR; grep Sig /proc/self/status) > seen; "
             "until [ -e go ]; do sleep 0.02; done; exit 3'"});
  mpm->expectText("NELMPM -> NELKV MSG_CONNECT_OK");
  Client ui = tool(NELKVUI);
  ui.send(NELKVUI, 0, MSG_TOOL_READY);
  scratch.write("go", "");
  mpm->expectText("NELMPM -> NELKVUI MSG_LINK_WARNING_BOX(11006) \"Korvane - Tool ended\" \"sh (");
  EXPECT_THAT(mpm->errors(), HasSubstr("ended with status 3\n"));
  // The three standard descriptors, and the one with which ls reads the folder.
  EXPECT_THAT(readFile(scratch / "seen"), testing::AllOf(testing::StartsWith("0\n1\n2\n3\nNEL2\n"),
                                                         HasSubstr("SigBlk:\t0000000000000000\n")));
  ui.connection.close();
  EXPECT_EQ(mpm->exitStatus(), 0);
  EXPECT_THAT(mpm->output(), ContainsRegex("\n2[0-9]{3}-[0-9:. -]{18} NELKV -> NELMPM "
                                           "MSG_SHUTDOWN_ACK\\(7002\\)\n"));

  start({"--tool", "sh -c 'trap \"\" TERM; echo up; while :; do sleep 1; done'"});
  mpm->expectText("up\n");
  EXPECT_TRUE(waitUntil([this] {
    mpm->signal(SIGTERM);  // each further one brings the next step forward
    return !mpm->isRunning();
  })) << "it kills a tool that ignores everything";
}

TEST_F(PostmasterTest, BringsBackATesterThatWasKilledOrHangsAndLosesNoCommand) {
  const std::string process = (scratch / "process").string();
  start({"--restart-tester", "--tester-patience", "1", "--charset", "UTF-8", "--tool",
         "sh -c 'echo $$ > " + process + "; exec " + builtProgram("nelkv").string() + "'"});
  Client ui = tool(NELKVUI);
  const auto await = [&](const std::string& text) {
    EXPECT_TRUE(waitUntil([&] { return ui.receive().find(text) != std::string::npos; })) << text;
  };
  const auto command = [&](const char* text) {
    ui.send(NELKVUI, NELKV, MSG_UI_COMMAND, wireString(text));
  };
  const auto strike = [&](int signal) { kill(std::stoi(readFile(process)), signal); };
  ui.send(NELKVUI, 0, MSG_TOOL_READY);
  await("MSG_T_TITLE");
  strike(SIGKILL);
  await("was killed by signal 9.\\n\\nStart it again?\"");
  command("kept \xe9");
  ui.send(NELKVUI, NELKV, MSG_UI_OK);
  await("MSG_T_PROMPT(2002) \"kept \\xe9\"");
  strike(SIGSTOP);
  command("stuck");
  await("has not answered for 1 seconds.\\n\\nEnd it and start it again?\"");
  ui.send(NELKVUI, NELKV, MSG_UI_OK);
  await("\\\"stuck\\\" was not confirmed");
  await("MSG_T_TITLE");
  strike(SIGKILL);
  await("Start it again?");
  command("late");
  ui.send(NELKVUI, NELKV, MSG_UI_NOT_OK);
  await("\\\"late\\\" was not sent");
}

TEST_F(PostmasterTest, SaysWhyItCannotStartOrGoOn) {
  const std::string broken = scratch.write("broken", "no program").string();
  fs::permissions(broken, fs::perms::owner_all);
  const std::tuple<std::vector<std::string>, int, std::string> rows[] = {
      {{"--tool", "nel-no-such-tool"}, 1, "cannot start nel-no-such-tool"},
      {{"--tool", broken}, 1, "cannot start " + broken},
      {{"--tool", "true"}, 1, "no user interface came"},
      {{"--trace", "/nowhere/trace"}, 1, "/nowhere/trace: No such file or directory\n"},
      {{"--frobnicate"}, 2, "--frobnicate"},
      {{"--charset", "no-such-set"}, 2, "--charset 'no-such-set' is not known here"},
  };
  for (const auto& [arguments, status, text] : rows) {
    ChildProcess refused(Launch{builtProgram("nelmpm"), arguments});
    EXPECT_EQ(refused.exitStatus(), status);
    EXPECT_THAT(refused.errors(), HasSubstr(text));
    EXPECT_FALSE(fs::exists(portFileName()));
  }
  start({"--trace", "/dev/full"});
  tool(NELKVUI);
  mpm->expectText("the trace cannot be written");
}

}  // namespace
