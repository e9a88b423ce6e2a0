// How a tool finds its Postmaster and is taken in. Each tool is a process of its own; it plays its
// Postmaster, too, while it waits.

#include <sys/resource.h>

#include <filesystem>
#include <fstream>
#include <functional>

#include <csignal>
#include <cstdlib>

#include "link/message_numbers.h"
#include "link/port_control.h"
#include "link/tool_interface.h"
#include "tests/link/link_test.h"
#include "tests/support/rendezvous.h"

namespace {

using testing::ExitedWithCode;
namespace fs = std::filesystem;

class Handshake : public testing::Test {
 protected:
  /// The tool, in whose first pause `whileWaiting` is called; it says how that ended.
  static void initialise(int type, const std::function<bool()>& whileWaiting) {
    static std::function<bool()> hook;
    hook = whileWaiting;
    setWaitHook([](int) { return hook(); });
    setMessageHandler([](int, int tag, int, const char*) {
      if (tag == MSG_TOOL_STARTED) {
        ToolReceive(kReceivePoll);  // as a dialog that the message opened would
      } else if (tag == MSG_T_TEXT) {
        std::raise(SIGALRM);  // when the poll has looked at its flags
      }
    });
    const int result = ToolInit(type);
    const int flags = g_SignalClient->GetSignalFlags();
    std::fprintf(stderr, "%d in state %d, flags %d, alarm %d\n", result, g_ToolState, flags,
                 alarm(0) > 0);
    _exit(0);
  }

  /// Takes the tool's connection, compares what came with its request, and answers.
  bool answer(const std::string& bytes) {
    const UniqueDescriptor accepted = postmaster.accept();
    std::string came(200, '!');
    const ssize_t count = recv(accepted.get(), came.data(), came.size(), 0);
    EXPECT_EQ(came.substr(0, static_cast<std::size_t>(count)),
              wireText({kFrameDirected, MSG_CONNECT, NELKVUI, NELMPM, 0}));
    EXPECT_EQ(send(accepted.get(), bytes.data(), bytes.size(), 0), std::ssize(bytes));
    return true;
  }

  static std::string frame(int tag) { return wireText({kFrameDirected, tag, NELMPM, NELKVUI, 0}); }
  static bool alarmComes() {
    const unsigned left = alarm(0);
    std::fprintf(stderr, "alarm in %u s\n", left < 19 || left > 20 ? left : 20);
    std::raise(SIGALRM);
    return true;
  }

  Rendezvous postmaster;
};

TEST_F(Handshake, endsWithTheAnswerWhoeverReadsItAndStopsTheAlarm) {
  const std::string connected = frame(MSG_CONNECT_OK);
  const std::pair<std::string, const char*> rows[] = {
      {connected, "0 in state 2, flags 0, alarm 0\n"},
      {frame(MSG_TOOL_STARTED) + connected, "0 in state 2, flags 0, alarm 0\n"},
      {frame(MSG_CONNECT_DENIED), "-1 in state 4, flags 0, alarm 1\n"}};
  for (const auto& [burst, ending] : rows) {
    EXPECT_EXIT(initialise(NELKVUI, [&, &burst = burst] { return answer(burst); }),
                ExitedWithCode(0), says(ending));
  }
}

// Intended: the alarm is a flag like any other, so it shows as a broken connection.
TEST_F(Handshake, takesASilentPostmasterForABrokenConnection) {
  EXPECT_EXIT(initialise(NELKVUI, alarmComes), ExitedWithCode(0),
              says("alarm in 20 s\nNELKVUI:**ERR:Broken MPM connection.\n"
                   "-1 in state 3, flags 8, alarm 0\n"));
  postmaster.accept();
  EXPECT_EXIT(initialise(NELKVUI, [&] { return answer(frame(MSG_T_TEXT)); }), ExitedWithCode(145),
              says("PROCESS(PID=~):**ERR Connection timeout. Exiting.\n"));
}

// Intended: each step goes on after a failure, and at last the name that the parent meant to use
// is removed.
TEST_F(Handshake, tellsEachStepThatFailsAndIsMadeOnce) {
  const std::string noPort =
      "PROCESS(PID=~):**ERR:Cannot connect to Tessil Postmaster due to missing port. File " +
      portFileName() + "\n";
  const std::string noSocket =
      "PROCESS(~):**ERR: When trying initialization of connection - no connection to Tessil "
      "Postmaster !!\n-1 -1\n";
  const std::string refused =
      "**ERR: PortControlClient::GetPortNumberClient:Clients portnumber not found!!\n"
      "PROCESS(~):**ERR: Cannot connect with Tessil Postmaster (no free port available).\n"
      "PROCESS(PID=~):**ERR: When trying to connect to Tessil Postmaster (SockOpenCl)-Errno=111 "
      "Connection refused\n"
      "PROCESS(~):**ERR: When trying to open connection - no connection to server !!\n-1 -1\n";
  const auto connect = [](bool hasDescriptors) {
    static constexpr rlimit kNone{0, 100};
    static constexpr rlimit kSome{100, 100};
    setrlimit(RLIMIT_NOFILE, hasDescriptors ? &kSome : &kNone);
    // A sanitizer needs descriptors for its checks at the end.
    std::atexit([] { setrlimit(RLIMIT_NOFILE, &kSome); });
    const SocketControlClient client;
    std::fprintf(stderr, "%d %d\n", client.descriptor(), client.connectionResult());
    const SocketControlClient second;
  };
  const std::string fatal = "PROCESS(PID=~): INTERNAL FATAL ERROR:#101. Exit !\n";
  EXPECT_EXIT(connect(false), ExitedWithCode(156), says(noPort + noSocket + fatal));
  std::ofstream(socketFileName(0, getpid())) << "no socket";
  fs::remove(portFileName());
  EXPECT_EXIT(connect(true), ExitedWithCode(156), says(noPort + refused + fatal));
  EXPECT_FALSE(fs::exists(socketFileName(0, getpid())));
}

TEST_F(Handshake, refusesTypesThatNoToolHas) {
  for (const int type : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8}) {
    const bool isTool = type > 0 && type != 4 && type != 6 && type < 8;
    EXPECT_EXIT(initialise(type, [] { return false; }), ExitedWithCode(0),
                says(std::string(isTool ? "" : "**ERR:Unrecognized tooltype\n") + "-1 in state " +
                     (isTool ? "1" : "0") + ", flags 0, alarm 0\n"));
    postmaster.accept();
  }
}

}  // namespace
