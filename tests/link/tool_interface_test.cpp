#include "link/tool_interface.h"

#include <gmock/gmock.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/port_control.h"
#include "link/typed_senders.h"
#include "tests/link/forked_tool.h"
#include "tests/unit/link/allocation_control.h"

using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

struct Received {
  int sender;
  int tag;
  std::string payload;
  bool operator==(const Received&) const = default;
};

// A tool whose connection is one end of a socket pair; the other one is the Postmaster's.
class ToolInterface : public testing::Test {
 protected:
  ToolInterface() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    own = UniqueDescriptor(ends[0]);
    far = UniqueDescriptor(ends[1]);
    g_SocketClient = std::make_unique<SocketControlClient>(own.get());
    g_ToolSocket = own.get();
    g_OwnToolType = NELKVUI;
    g_ToolState = LINK_CONNECTED;
    g_BrokenReported = 0;
    received.clear();
    setMessageHandler([](int sender, int tag, int length, const char* payload) {
      received.push_back({sender, tag, {payload, static_cast<std::size_t>(length)}});
    });
    errno = 0;
  }
  ~ToolInterface() override {
    setMessageHandler(nullptr);
    g_SocketClient.reset();
    g_SignalClient.reset();
    g_ToolState = LINK_IDLE;
  }

  void arrive(const std::string& bytes) const {
    ASSERT_EQ(write(far.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  void arrive(int tag, const std::string& payload = {}) const {
    arrive(
        wireText({kFrameDirected, tag, NELKV, NELKVUI, static_cast<int>(payload.size())}, payload));
  }

  // Frames that went out.
  std::vector<std::string> sent() const {
    std::string bytes(100000, '!');
    const ssize_t count = recv(far.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
    bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    std::vector<std::string> frames;
    for (std::size_t start = 0; start < bytes.size();) {
      const std::size_t next = bytes.find('\0', start) + 1;
      frames.push_back(bytes.substr(start, next - start));
      start = next;
    }
    return frames;
  }

  static std::string toPostmaster(int tag) {
    return wireText({kFrameDirected, tag, NELKVUI, NELMPM, 0});
  }

  static std::vector<Received> received;

  PrivateRendezvous rendezvous;
  UniqueDescriptor own;
  UniqueDescriptor far;
};

std::vector<Received> ToolInterface::received;

TEST_F(ToolInterface, putsOnTheSocketWhatTheStateAllows) {
  struct Row {
    int state;
    bool toPostmaster;
    bool toOthers;
  };
  for (const Row& row : {Row{LINK_IDLE, true, false}, Row{LINK_CONNECTING, true, false},
                         Row{LINK_CONNECTED, true, true}, Row{LINK_LEAVING, true, false},
                         Row{LINK_CLOSED, false, false}, Row{LINK_SHUTDOWN, false, false},
                         Row{6, false, false}, Row{-1, false, false}}) {
    g_ToolState = row.state;
    CaptureStderr();
    EXPECT_EQ(ToolSend(NELMPM, MSG_DISCONNECT, nullptr, 0), row.toPostmaster ? 0 : -1);
    EXPECT_EQ(sent().size(), row.toPostmaster ? 1U : 0U) << row.state;
    EXPECT_EQ(ToolSend(NELKV, MSG_UI_OK, nullptr, 0), row.toOthers ? 0 : -1);
    EXPECT_EQ(ToolBroadcast(MSG_TOOL_READY, nullptr, 0), row.toOthers ? 0 : -1);
    EXPECT_EQ(sent(), row.toOthers
                          ? std::vector({wireText({kFrameDirected, 1000, NELKVUI, NELKV, 0}),
                                         wireText({kFrameUndirected, 9001, NELKVUI, 0, 0})})
                          : std::vector<std::string>())
        << row.state;
    EXPECT_EQ(GetCapturedStderr(), "") << "a refusal by the state is silent";
  }
}

TEST_F(ToolInterface, refusesWhatDoesNotFitAFrameWithOneLine) {
  const std::string payload(kMaxPayloadBytes + 1, 'p');
  EXPECT_EQ(ToolSend(NELKV, 1002, payload.data(), kMaxPayloadBytes), 0);
  ASSERT_THAT(sent(), testing::SizeIs(1));
  for (const int length : {kMaxPayloadBytes + 1, std::numeric_limits<int>::max(), -1}) {
    CaptureStderr();
    EXPECT_EQ(ToolSend(NELKV, 1002, payload.data(), length), -1);
    EXPECT_EQ(GetCapturedStderr(), "PROCESS(PID=" + std::to_string(getpid()) +
                                       "):**ERR:Message 1002 with " + std::to_string(length) +
                                       " bytes does not fit a frame. Not sent.\n");
    EXPECT_THAT(sent(), ElementsAre());
  }
}

TEST_F(ToolInterface, sendsEachTypedMessageToItsReceiver) {
  StringList bits;
  bits.append("0");
  bits.append("12");
  sendCommand("go");
  sendFileAnswer("/a/b");
  sendStringAnswer("");
  sendValueAnswer(nullptr);
  sendListAnswer("-");
  sendBitsAnswer(bits.head());
  sendHelpRequest("topic");
  sendSignalParameterAnswer("p");
  sendDirectoryAnswer("/");
  const auto text = [](int dest, int tag, const std::string& payload) {
    return wireText({0, tag, NELKVUI, dest, static_cast<int>(payload.size())}, payload);
  };
  EXPECT_THAT(sent(),
              ElementsAre(text(NELKV, 1002, wireString("go")),
                          text(NELKV, 1008, wireString("/a/b")), text(NELKV, 1004, wireWord(0)),
                          text(NELKV, 1005, wireWord(0)), text(NELKV, 1006, wireString("-")),
                          text(NELKV, 1009, wireWord(2) + wireString("0") + wireString("12")),
                          text(NELLINK, 10004, wireString("topic")),
                          text(NELKV, 1013, wireString("p")), text(NELKV, 1010, wireString("/"))));
}

TEST_F(ToolInterface, saysOnceThatATextIsTooLong) {
  EXPECT_EQ(sendCommand(std::string(kMaxSentText, 'c').c_str()), 0);
  EXPECT_THAT(sent(), testing::SizeIs(1));
  for (const std::size_t length : {kMaxSentText + 1, kEncodeBufferBytes}) {
    CaptureStderr();
    EXPECT_EQ(sendCommand(std::string(length, 'c').c_str()), kEncodeFailed);
    const std::string errors = GetCapturedStderr();
    EXPECT_THAT(errors, testing::MatchesRegex("PROCESS\\(PID=[0-9]+\\):\\*\\*ERR:Message 1002 .*"
                                              "does not fit .*\\. Not sent\\.\n"));
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1);
    EXPECT_THAT(sent(), ElementsAre());
  }
}

TEST_F(ToolInterface, receivesOneMessageAPollAndReturnsItsTag) {
  EXPECT_EQ(ToolReceive(kReceivePoll), 0);
  arrive(MSG_T_TEXT, wireString("hello"));
  arrive(4711);
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_THAT(received, ElementsAre(Received{NELKV, MSG_T_TEXT, wireString("hello")}));
  EXPECT_EQ(ToolReceive(kReceivePoll), 4711);
  EXPECT_EQ(ToolReceive(kReceivePoll), 0);
}

TEST_F(ToolInterface, givesNoPayloadOfAFrameThatCarriesLessThanItAnnounces) {
  setMessageHandler([](int sender, int tag, int length, const char* payload) {
    received.push_back({sender, tag, payload == nullptr ? "none" : "some"});
    EXPECT_EQ(length, 5);
  });
  arrive(wireText({kFrameDirected, MSG_T_TEXT, NELKV, NELKVUI, 5}, "four"));
  arrive(wireText({kFrameDirected, MSG_T_TEXT, NELKV, NELKVUI, 5}, "five!"));
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_THAT(received, ElementsAre(Received{NELKV, MSG_T_TEXT, "none"},
                                    Received{NELKV, MSG_T_TEXT, "some"}));
}

TEST_F(ToolInterface, takesNoNumberFromOutsideForALostLink) {
  arrive(-1);
  EXPECT_EQ(ToolReceive(kReceivePoll), 0);
  EXPECT_THAT(received, ElementsAre(Received{NELKV, -1, ""}));
}

// Boxes of messages stand over each other in any number.
TEST_F(ToolInterface, keepsNothingOfAFrameOnTheStackUnderTheHandler) {
  static std::vector<const char*> levels;
  levels.clear();
  setMessageHandler([](int, int, int, const char*) {
    levels.push_back(static_cast<const char*>(__builtin_frame_address(0)));
    ToolReceive(kReceivePoll);
  });
  for (int i = 0; i < 3; ++i) {
    arrive(MSG_T_TEXT, "text");
  }
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  ASSERT_THAT(levels, testing::SizeIs(3));
  EXPECT_LT(levels[1] - levels[2], 2000);
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
  far = UniqueDescriptor();
  takes(0);
  EXPECT_TRUE(isSilent()) << "the end of the stream can be read for ever";
}

TEST_F(ToolInterface, isWokenBySignalsAndByNoFrameThatCanNeverBeTaken) {
  arrive(std::string(kMaxFrameText + 1, '0'));
  ForkedTool tool([] {
    g_SignalClient = std::make_unique<CatchSignalsClient>();
    while (ToolInput() == SocketInput::kThere) {
      ToolReceive(kReceivePoll);
    }
    const bool wasStuck = ToolInput() == SocketInput::kStuck;
    std::raise(SIGTERM);
    const bool wasMute = !ToolHasInput();
    std::raise(SIGINT);
    pollfd entry{ToolWakeDescriptors()[1], POLLIN, 0};
    const bool wasWoken = poll(&entry, 1, 0) == 1 && ToolHasInput() && poll(&entry, 1, 0) == 0;
    const bool wasBroken = ToolReceive(kReceivePoll) == -1 && !ToolHasInput();
    return wasStuck && wasMute && wasWoken && wasBroken ? 1 : 0;
  });
  EXPECT_EQ(tool.end().status, 1);
}

// A handler may poll again, from a dialog that its message opened.
TEST_F(ToolInterface, canBeEnteredAgainFromTheHandler) {
  arrive(MSG_T_TEXT, wireString("outer"));
  arrive(MSG_T_PROMPT, wireString("inner message"));
  setMessageHandler([](int sender, int tag, int length, const char* payload) {
    const Received message{sender, tag, {payload, static_cast<std::size_t>(length)}};
    if (tag == MSG_T_TEXT) {
      EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_PROMPT);
    }
    received.push_back(message);
  });
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_THAT(received, ElementsAre(Received{NELKV, MSG_T_PROMPT, wireString("inner message")},
                                    Received{NELKV, MSG_T_TEXT, wireString("outer")}));
}

TEST_F(ToolInterface, allocatesNothingToSendAndToReceive) {
  setMessageHandler([](int, int, int, const char*) {});
  const std::string payload(1000, 'p');
  arrive(MSG_T_TEXT, payload);
  arrive(MSG_T_TEXT, payload.substr(0, 10));
  const long before = allocationCount();
  EXPECT_EQ(ToolSend(NELKV, MSG_UI_COMMAND, payload.data(), 1000), 0);
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_T_TEXT);
  EXPECT_EQ(allocationCount(), before);
}

TEST_F(ToolInterface, followsTheMessagesOfThePostmaster) {
  g_ToolState = LINK_CONNECTING;
  arrive(MSG_CONNECT_OK, "ok");
  EXPECT_EQ(ToolReceive(kReceivePoll), MSG_CONNECT_OK);
  EXPECT_EQ(g_ToolState, LINK_CONNECTED);
  EXPECT_THAT(received, ElementsAre(Received{NELKV, MSG_CONNECT_OK, "ok"}));
  received.clear();

  arrive(MSG_CONNECT_DENIED);
  EXPECT_EQ(ToolReceive(kReceivePoll), -1);
  EXPECT_EQ(g_ToolState, LINK_CLOSED);

  g_ToolState = LINK_CONNECTED;
  const std::string name = socketFileName(0, getppid());
  std::ofstream(name) << "socket";
  arrive(MSG_SHUTDOWN);
  EXPECT_EQ(ToolReceive(kReceivePoll), -1);
  EXPECT_EQ(g_ToolState, LINK_CLOSED);
  EXPECT_THAT(sent(), ElementsAre(toPostmaster(MSG_SHUTDOWN_ACK)));
  EXPECT_FALSE(std::filesystem::exists(name));
  EXPECT_THAT(received, ElementsAre()) << "the tool's handler sees none of these";
}

// Intended: any flag counts as a broken connection, once a run and only when no frame is there.
TEST_F(ToolInterface, reportsABrokenConnectionOnceForAnyFlag) {
  ForkedTool tool([this] {
    g_SignalClient = std::make_unique<CatchSignalsClient>();
    std::raise(SIGINT);
    arrive(MSG_T_EXIT);
    for (int poll = 0; poll < 2; ++poll) {
      std::fprintf(stderr, "%d\n", ToolReceive(kReceivePoll));
    }
    const int state = g_ToolState;
    std::fprintf(stderr, "%d\n", ToolReceive(kReceivePoll));
    return state;
  });
  const ToolEnd end = tool.end();
  EXPECT_EQ(end.status, LINK_LEAVING);
  EXPECT_EQ(end.errors, "2007\nNELKVUI:**ERR:Broken MPM connection.\n-1\n0\n");
}

struct ExitRow {
  const char* what;
  int state;
  std::function<int()> call;
  int status;  // of the process; 10 when the call came back
  std::string errors;
};

// Calls that end the process or say goodbye, each in a process of its own.
TEST_F(ToolInterface, leavesOrEndsTheProcessByItsState) {
  const auto leave = [] { return ToolExit(2); };
  const auto confirmed = [] { return ToolSystemMessage(MSG_CONNECT_OK); };
  const auto shutDown = [] { return ToolSystemMessage(MSG_SHUTDOWN_NOW); };
  const std::vector<ExitRow> rows = {
      {"leave, idle", LINK_IDLE, leave, 0, ""},
      {"leave, connecting", LINK_CONNECTING, leave, 10, ""},
      {"leave, connected", LINK_CONNECTED, leave, 10, ""},
      {"leave, leaving", LINK_LEAVING, leave, 10, ""},
      {"leave, closed", LINK_CLOSED, leave, 0, ""},
      {"leave, shutdown", LINK_SHUTDOWN, leave, 0, ""},
      {"leave, no state", 9, leave, 10, ""},
      {"system message, idle", LINK_IDLE, confirmed, 155,
       "PROCESS(PID):**ERR:INTERNAL ERROR #101\n"},
      {"system message, shutdown", LINK_SHUTDOWN, confirmed, 155,
       "PROCESS(PID):**ERR:INTERNAL ERROR #101\n"},
      {"shutdown now", LINK_CONNECTED, shutDown, 154, ""},
      {"shutdown now, closed", LINK_CLOSED, shutDown, 154, ""},
  };
  for (const ExitRow& row : rows) {
    const std::string name = rendezvous.socketName(0);
    std::ofstream(name) << "socket";
    ForkedTool tool([&row] {
      g_ToolState = row.state;
      row.call();
      const int once = g_ToolState;
      row.call();
      return once == g_ToolState ? 10 : 1;
    });
    const std::string pid = std::to_string(tool.id());
    const ToolEnd end = tool.end();
    EXPECT_EQ(end.status, row.status) << row.what;
    std::string expected = row.errors;
    if (const std::size_t at = expected.find("PID"); at != std::string::npos) {
      expected.replace(at, 3, pid);
    }
    EXPECT_EQ(end.errors, expected) << row.what;
    EXPECT_EQ(std::filesystem::exists(name), row.status == 154) << row.what;
    const bool saysGoodbye =
        row.state == LINK_CONNECTING || (row.state == LINK_CONNECTED && row.status == 10);
    EXPECT_EQ(sent(),
              saysGoodbye ? std::vector{toPostmaster(MSG_DISCONNECT)} : std::vector<std::string>{})
        << row.what;
  }
}

}  // namespace
