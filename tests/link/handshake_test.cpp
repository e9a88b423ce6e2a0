#include <gmock/gmock.h>

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

constexpr int kRefused = 11;

// The tool: initialises, says in which state it is, and returns which way that went.
int initialise(int toolType) {
  const int result = ToolInit(toolType);
  std::fprintf(stderr, "state %d\n", g_ToolState);
  return result == -1 ? kRefused : 1;
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

TEST_F(Handshake, endsWithTheAnswerWhoeverReadsItAndStopsTheAlarm) {
  const auto fromPostmaster = [](int tag) {
    return wireText({kFrameDirected, tag, NELMPM, NELKVUI, 0});
  };
  postmaster.listen();
  for (const std::string& burst :
       {fromPostmaster(MSG_CONNECT_OK),
        fromPostmaster(MSG_TOOL_STARTED) + fromPostmaster(MSG_CONNECT_OK)}) {
    ForkedTool tool([] {
      setMessageHandler([](int, int tag, int, const char*) {
        if (tag == MSG_TOOL_STARTED) {
          ToolReceive(kReceivePoll);  // as a dialog that the message opened would
        }
      });
      initialiseUi();
      return static_cast<int>(alarm(0)) + g_SignalClient->GetSignalFlags();
    });
    postmaster.accept();
    postmaster.send(burst);
    const ToolEnd end = tool.end();
    EXPECT_EQ(end.status, 0) << "the alarm still runs, or has come";
    EXPECT_EQ(end.errors, "state 2\n");
  }
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

}  // namespace
