#include <gmock/gmock.h>
#include <sys/resource.h>

#include <unistd.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <new>
#include <string>

#include "link/link_settings.h"
#include "link/message_numbers.h"
#include "link/port_control.h"
#include "link/tool_interface.h"
#include "tests/link/forked_tool.h"
#include "tests/unit/link/allocation_control.h"

namespace {

constexpr int kInitialised = 10;
constexpr int kRefused = 11;

const std::string kConnectOk =
    wireWord(1) + wireWord(2) + wireWord(3) + wireWord(4) + wireString("ident");

void sayWhatCame(int sender, int tag, int length, const char* /*payload*/) {
  std::fprintf(stderr, "handler: %d from %d, %d bytes\n", tag, sender, length);
}

// The tool: initialises, says in which state it is, and returns which way that went.
int initialise(int toolType) {
  setMessageHandler(sayWhatCame);
  const int result = ToolInit(toolType);
  std::fprintf(stderr, "state %d\n", g_ToolState);
  return result == 0 ? kInitialised : result == -1 ? kRefused : 1;
}

int initialiseUi() {
  return initialise(NELKVUI);
}

class Handshake : public testing::Test {
 protected:
  Handshake() : formerSeconds(linkSettings().handshakeSeconds) {}
  ~Handshake() override { linkSettings().handshakeSeconds = formerSeconds; }

  void shortenAlarm() { linkSettings().handshakeSeconds = 1; }

  PrivateRendezvous postmaster;

 private:
  int formerSeconds;
};

TEST_F(Handshake, asksForTheConnectionAndEndsWithItsConfirmation) {
  postmaster.listen();
  ForkedTool tool(initialiseUi);
  postmaster.accept();
  const Frame request = postmaster.expectFrame();
  EXPECT_EQ(request.header.kind, kFrameDirected);
  EXPECT_EQ(request.header.tag, MSG_CONNECT);
  EXPECT_EQ(request.header.sender, NELKVUI);
  EXPECT_EQ(request.header.dest, NELMPM);
  EXPECT_EQ(request.header.length, 0);
  postmaster.send(MSG_TOOL_STARTED);
  postmaster.send(MSG_CONNECT_OK, kConnectOk);
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, kInitialised);
  EXPECT_EQ(end.errors, "handler: 9000 from 4, 0 bytes\nhandler: 8000 from 4, 25 bytes\nstate 2\n");
  EXPECT_TRUE(std::filesystem::exists(postmaster.socketName()));
}

TEST_F(Handshake, endsWithADenialThatTheToolsHandlerNeverSees) {
  postmaster.listen();
  ForkedTool tool(initialiseUi);
  postmaster.accept();
  postmaster.send(MSG_CONNECT_DENIED, wireWord(1) + wireWord(2) + wireWord(3) + wireWord(4));
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, kRefused);
  EXPECT_EQ(end.errors, "state 4\n");
}

// Intended: the alarm is a flag like any other, so it shows as a broken connection.
TEST_F(Handshake, takesASilentPostmasterForABrokenConnection) {
  shortenAlarm();
  postmaster.listen();
  ForkedTool tool(initialiseUi);
  postmaster.accept();
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, kRefused);
  EXPECT_EQ(end.errors, "NELKVUI:**ERR:Broken MPM connection.\nstate 3\n");
}

TEST_F(Handshake, endsTheProcessWhenTheAlarmIsNotTakenForABrokenConnection) {
  shortenAlarm();
  postmaster.listen();
  ForkedTool tool([] {
    g_BrokenReported = 1;
    return initialiseUi();
  });
  const std::string pid = std::to_string(tool.id());
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, 145);
  EXPECT_EQ(end.errors, "PROCESS(PID=" + pid + "):**ERR Connection timeout. Exiting.\n");
}

TEST_F(Handshake, withoutAPortFileSaysEachStepAndWaitsAllTheSame) {
  shortenAlarm();
  ForkedTool tool(initialiseUi);
  const std::string pid = std::to_string(tool.id());
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, kRefused);
  EXPECT_EQ(end.errors,
            "PROCESS(PID=" + pid +
                "):**ERR:Cannot connect to Tessil Postmaster due to missing port. File " +
                portFileName() +
                "\n"
                "**ERR: PortControlClient::GetPortNumberClient:Clients portnumber not found!!\n"
                "PROCESS(" +
                pid +
                "):**ERR: Cannot connect with Tessil Postmaster (no free port available).\n"
                "PROCESS(PID=" +
                pid +
                "):**ERR: When trying to connect to Tessil Postmaster (SockOpenCl)-Errno=2 No such "
                "file or directory\n"
                "PROCESS(" +
                pid +
                "):**ERR: When trying to open connection - no connection to server !!\n"
                "NELKVUI:**ERR:Broken MPM connection.\n"
                "state 3\n");
}

// Intended: a failed connect removes the name that the parent meant to use.
TEST_F(Handshake, withNobodyListeningRemovesTheSocketsName) {
  shortenAlarm();
  postmaster.writePortFile();
  std::ofstream(postmaster.socketName()) << "no socket";
  ForkedTool tool(initialiseUi);
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, kRefused);
  EXPECT_THAT(end.errors, testing::HasSubstr("(SockOpenCl)-Errno=111 Connection refused\n"));
  EXPECT_FALSE(std::filesystem::exists(postmaster.socketName()));
}

TEST_F(Handshake, refusesTypesThatNoToolHas) {
  postmaster.listen();
  for (const int type : {-1, 0, 4, 6, 8}) {
    ForkedTool tool([type] { return initialise(type); });
    const ToolEnd end = tool.end();
    EXPECT_EQ(end.status, kRefused) << type;
    EXPECT_EQ(end.errors, "**ERR:Unrecognized tooltype\nstate 0\n") << type;
    postmaster.accept();
  }
}

TEST_F(Handshake, endsTheProcessThatMakesASecondClient) {
  postmaster.listen();
  ForkedTool tool([] {
    const SocketControlClient first;
    const SocketControlClient second;
    return 0;
  });
  const std::string pid = std::to_string(tool.id());
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, 156);
  EXPECT_EQ(end.errors, "PROCESS(PID=" + pid + "): INTERNAL FATAL ERROR:#101. Exit !\n");
}

TEST_F(Handshake, removesTheToolsOwnFileWhenAnExceptionEndsTheConstruction) {
  postmaster.listen();
  for (const long allocations : {0, 1}) {
    ForkedTool tool([allocations] {
      const std::string own = portFileName() + "." + std::to_string(getpid());
      std::ofstream(own) << "own";
      try {
        // The frame buffer runs out of memory, or the first name that is formed behind it.
        const FailingAllocation failing(allocations);
        const SocketControlClient client;
      } catch (const std::bad_alloc&) {
        return std::filesystem::exists(own) ? 1 : 0;
      }
      return 2;
    });
    EXPECT_EQ(tool.end().status, 0) << allocations;
  }
}

TEST_F(Handshake, withoutASocketStopsConnectingButWaitsAllTheSame) {
  shortenAlarm();
  postmaster.listen();
  ForkedTool tool([] {
    const rlimit noMore{0, 0};
    setrlimit(RLIMIT_NOFILE, &noMore);
    return initialiseUi();
  });
  const std::string pid = std::to_string(tool.id());
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, kRefused);
  EXPECT_EQ(end.errors,
            "PROCESS(PID=" + pid +
                "):**ERR:Cannot connect to Tessil Postmaster due to missing port. File " +
                portFileName() + "\nPROCESS(" + pid +
                "):**ERR: When trying initialization of connection - no connection to Tessil "
                "Postmaster !!\n"
                "NELKVUI:**ERR:Broken MPM connection.\nstate 3\n");
}

// The Postmaster hangs up: only the next send finds out, and only the poll after it tells.
TEST_F(Handshake, noticesADeadPostmasterByTheNextSend) {
  postmaster.listen();
  ForkedTool tool([] {
    initialiseUi();
    while (g_SocketClient->SockWait(g_ToolSocket, kWaitForever) <= 0) {
    }
    std::fprintf(stderr, "poll %d, ", ToolReceive(kReceivePoll));
    std::fprintf(stderr, "send %d\n", ToolSend(NELKV, MSG_UI_OK, nullptr, 0));
    std::fprintf(stderr, "send %d\n", ToolSend(NELKV, MSG_UI_OK, nullptr, 0));
    std::fprintf(stderr, "poll %d\n", ToolReceive(kReceivePoll));
    std::fprintf(stderr, "poll %d\n", ToolReceive(kReceivePoll));
    return g_ToolState;
  });
  const std::string pid = std::to_string(tool.id());
  postmaster.accept();
  postmaster.expectFrame();
  postmaster.send(MSG_CONNECT_OK, kConnectOk);
  postmaster.hangUp();
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, LINK_LEAVING);
  EXPECT_EQ(end.errors, "handler: 8000 from 4, 25 bytes\nstate 2\npoll 0, PROCESS:" + pid +
                            ":No connection to Tessil Postmaster. Continuing.\n"
                            "Can't send message, as there was a broken connection.\n"
                            "send 0\nsend 0\n"
                            "NELKVUI:**ERR:Broken MPM connection.\n"
                            "poll -1\npoll 0\n");
}

}  // namespace
