#include "link/tool_interface.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <limits>

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/port_control.h"
#include "tests/link/link_test.h"
#include "tests/support/rendezvous.h"

namespace {

using testing::ExitedWithCode;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

std::string frame(int sender, int dest, int tag, const std::string& payload = {}) {
  const int kind = dest == 0 ? kFrameUndirected : kFrameDirected;
  return wireText({kind, tag, sender, dest, static_cast<int>(payload.size())}, payload);
}

// A tool whose connection is one end of a socket pair; the other one is the Postmaster's.
class ToolInterface : public testing::Test, protected SocketPair {
 protected:
  ToolInterface() {
    g_SocketClient = std::make_unique<SocketControlClient>(own.get());
    g_ToolSocket = own.get();
    g_OwnToolType = NELKVUI;
    g_ToolState = LINK_CONNECTED;
    g_BrokenReported = 0;
    received.clear();
    setMessageHandler([](int sender, int tag, int length, const char* payload) {
      note(sender, tag, length, payload);
    });
    errno = 0;
  }
  ~ToolInterface() override {
    setMessageHandler(nullptr);
    g_SocketClient.reset();
    g_SignalClient.reset();
    g_ToolState = LINK_IDLE;
    g_OwnToolType = -1;
  }

  using SocketPair::arrive;
  void arrive(int tag, const std::string& payload = {}) const {
    arrive(frame(NELKV, NELKVUI, tag, payload));
  }

  static void note(int sender, int tag, int length, const char* payload) {
    received +=
        std::to_string(sender) + " " + std::to_string(tag) + " " +
        (payload == nullptr ? "nothing of " + std::to_string(length)
                            : std::string(payload, static_cast<std::size_t>(std::max(length, 0)))) +
        "\n";
  }

  /// What the handler was given, a line each.
  static std::string received;

  RendezvousFolder folder;
};

std::string ToolInterface::received;

TEST_F(ToolInterface, putsOnTheSocketWhatTheStateAllows) {
  const std::string postmaster = frame(NELKVUI, NELMPM, 7001);
  const std::string others = frame(NELKVUI, NELKV, 1000) + frame(NELKVUI, 0, 9001);
  for (int state = -1; state <= 6; ++state) {
    const int toPostmaster = state >= LINK_IDLE && state <= LINK_LEAVING ? 0 : -1;
    const int toOthers = state == LINK_CONNECTED ? 0 : -1;
    g_ToolState = state;
    CaptureStderr();
    EXPECT_EQ(ToolSend(NELMPM, MSG_DISCONNECT, nullptr, 0), toPostmaster) << state;
    EXPECT_EQ(ToolSend(NELKV, MSG_UI_OK, nullptr, 0), toOthers) << state;
    EXPECT_EQ(ToolBroadcast(MSG_TOOL_READY, nullptr, 0), toOthers) << state;
    EXPECT_EQ(sent(), (toPostmaster == 0 ? postmaster : "") + (toOthers == 0 ? others : ""));
    EXPECT_EQ(GetCapturedStderr(), "") << "a refusal by the state is silent";
  }
}

TEST_F(ToolInterface, refusesWhatDoesNotFitAFrameWithOneLine) {
  const std::string payload(kEncodeBufferBytes, 'p');
  const auto refused = [&](auto send, const std::string& why, int expected) {
    CaptureStderr();
    EXPECT_EQ(send(), expected);
    EXPECT_THAT(GetCapturedStderr(), says("PROCESS(PID=~):**ERR:Message 1002 " + why +
                                          "does not fit a frame. Not sent.\n"));
    EXPECT_EQ(sent(), "");
  };
  EXPECT_EQ(ToolSend(NELKV, 1002, payload.data(), kMaxPayloadBytes), 0);
  EXPECT_EQ(sent().size(), std::size_t{kMaxSentFrameText});
  for (const int length : {kMaxPayloadBytes + 1, std::numeric_limits<int>::max(), -1}) {
    refused([&] { return ToolSend(NELKV, 1002, payload.data(), length); },
            "with " + std::to_string(length) + " bytes ", -1);
  }
  EXPECT_EQ(sendCommand(payload.substr(0, kMaxSentText).c_str()), 0);
  EXPECT_EQ(sent().size(), std::size_t{kMaxSentFrameText});
  for (const std::size_t length : {kMaxSentText + 1, kEncodeBufferBytes}) {
    refused([&] { return sendCommand(payload.substr(0, length).c_str()); }, "", kEncodeFailed);
  }
}

// Handlers may poll again, from dialogs that their messages opened.
TEST_F(ToolInterface, receivesOneMessageAPollAndMayBeEnteredAgain) {
  EXPECT_EQ(ToolReceive(kReceivePoll), 0);
  arrive(MSG_T_TEXT, wireString("hello"));
  arrive(-1);
  arrive(wireText({kFrameDirected, MSG_T_TEXT, NELKV, NELKVUI, 5}, "four"));
  arrive(wireText({kFrameDirected, MSG_T_TEXT, NELKV, NELKVUI, 1}, ""));
  arrive(wireText({kFrameDirected, 4711, NELGATE, NELKVUI, -1}, "five"));
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_EQ(received, "1 2000 " + wireString("hello") + "\n");
  EXPECT_EQ(ToolReceive(kReceivePoll), 0) << "no number from outside is a lost link";
  EXPECT_EQ(ToolReceive(kReceiveBlock), MSG_T_TEXT);
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_EQ(ToolReceive(kReceivePoll), 4711);
  EXPECT_THAT(received, testing::EndsWith("\n1 -1 \n1 2000 nothing of 5\n1 2000 nothing of 1\n"
                                          "3 4711 \n"));
  received.clear();
  arrive(MSG_T_TEXT, wireString("outer"));
  arrive(MSG_T_PROMPT, wireString("inner message"));
  setMessageHandler([](int sender, int tag, int length, const char* payload) {
    note(sender, tag, length, payload);
    if (tag == MSG_T_TEXT) {
      EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_PROMPT);
    }
  });
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_EQ(received,
            "1 2000 " + wireString("outer") + "\n1 2002 " + wireString("inner message") + "\n");
}

// Whether a tool that sleeps as it is told would wake now.
bool wouldWake() {
  const std::array<int, 2> sources = ToolWakeDescriptors();
  std::array entries{pollfd{sources[0], POLLIN, 0}, pollfd{sources[1], POLLIN, 0}};
  return poll(entries.data(), entries.size(), 0) > 0;
}

TEST_F(ToolInterface, saysWhatTheNextPollWouldFindAndWhatEndsTheSilence) {
  const auto isSilent = [] { return ToolInput() == SocketInput::kNone && !wouldWake(); };
  const auto takes = [](int tag) {
    EXPECT_TRUE(ToolHasInput());
    EXPECT_EQ(ToolReceive(kReceivePoll), tag);
  };
  EXPECT_TRUE(isSilent());
  arrive(MSG_T_TEXT);
  arrive(MSG_T_PROMPT);
  EXPECT_TRUE(wouldWake());
  takes(MSG_T_TEXT);
  takes(MSG_T_PROMPT);
  EXPECT_TRUE(isSilent());
  arrive("a part of a frame");
  takes(0);
  EXPECT_TRUE(isSilent());
  far.close();
  takes(0);
  EXPECT_TRUE(isSilent()) << "the end of the stream can be read for ever";
  g_SocketClient.reset();
  EXPECT_EQ(ToolReceive(kReceivePoll), 0) << "there is no link yet";
}

// Intended: any flag counts as a broken connection, once a run and only when no frame is there.
TEST_F(ToolInterface, isWokenBySignalsAndTakesThemForABrokenConnectionOnce) {
  const auto interrupted = [this] {
    g_SignalClient = std::make_unique<CatchSignalsClient>();
    arrive(MSG_T_EXIT);
    std::raise(SIGINT);
    std::fprintf(stderr, "woken %d\n", poll(nullptr, 0, 0) == 0 && wouldWake());
    for (int i = 0; i < 3; ++i) {
      const bool hasInput = ToolHasInput();
      const int result = ToolReceive(kReceivePoll);
      std::fprintf(stderr, "%d %d %d\n", hasInput, result, g_ToolState);
    }
    _exit(0);
  };
  EXPECT_EXIT(interrupted(), ExitedWithCode(0),
              says("woken 1\n1 2007 2\nNELKVUI:**ERR:Broken MPM connection.\n"
                   "1 -1 3\n0 0 3\n"));
}

// Calls that end the process or say goodbye, each in a process of its own.
TEST_F(ToolInterface, leavesOrEndsTheProcessByItsState) {
  constexpr int kStays = 10;
  const std::string goodbye = frame(NELKVUI, NELMPM, MSG_DISCONNECT);
  const std::string error = "PROCESS(~):**ERR:INTERNAL ERROR #";
  const struct {
    int state;
    int systemMessage;  // 0: leaves
    int status;
    std::string says;
    std::string sends;
  } rows[] = {
      {LINK_IDLE, 0, 0, "", ""},
      {LINK_CONNECTING, 0, kStays, "0 3\n", goodbye},
      {LINK_CONNECTED, 0, kStays, "0 3\n", goodbye},
      {LINK_LEAVING, 0, kStays, "0 3\n", ""},
      {LINK_CLOSED, 0, 0, "", ""},
      {LINK_SHUTDOWN, 0, 0, "", ""},
      {9, 0, kStays, "0 9\n", ""},
      {LINK_IDLE, MSG_CONNECT_OK, 155, error + "101\n", ""},
      {LINK_CONNECTING, MSG_CONNECT_OK, kStays, "8000 2\n", ""},
      {LINK_CONNECTED, MSG_CONNECT_DENIED, kStays, "-1 4\n", ""},
      {LINK_CONNECTED, MSG_SHUTDOWN, kStays, "-1 4\n", frame(NELKVUI, NELMPM, 7002)},
      {LINK_CLOSED, 4711, kStays, error + "140:Unreachable code reached.\n4711 4\n", ""},
      {LINK_SHUTDOWN, MSG_CONNECT_OK, 155, error + "101\n", ""},
      {LINK_CONNECTED, MSG_SHUTDOWN_NOW, 154, "", ""},
      {LINK_CLOSED, MSG_SHUTDOWN_NOW, 154, "", ""},
  };
  const std::string name = socketFileName(0, getpid());
  for (const auto& row : rows) {
    std::ofstream(name) << "socket";
    const auto call = [&] {
      g_SocketClient =
          std::make_unique<SocketControlClient>(own.get());  // of a process that we started
      g_ToolState = row.state;
      const int result =
          row.systemMessage != 0 ? ToolSystemMessage(row.systemMessage) : ToolExit(NELKVUI);
      std::fprintf(stderr, "%d %d\n", result, g_ToolState);
      _exit(kStays);
    };
    EXPECT_EXIT(call(), ExitedWithCode(row.status), says(row.says)) << row.state;
    const bool keepsName =
        row.systemMessage != 0 && row.systemMessage != MSG_SHUTDOWN && row.status != 155;
    EXPECT_EQ(std::filesystem::exists(name), keepsName) << row.state;
    EXPECT_EQ(sent(), row.sends) << row.state;
  }
}

}  // namespace
