#include <poll.h>
#include <sys/socket.h>

#include "postmaster/switchboard.h"
#include "tests/e2e/postmaster/postmaster_fixture.h"

using testing::HasSubstr;

namespace {

/// Whether the road from one tool to the other is open and empty.
bool passes(TestClient& from, int fromType, TestClient& to, int toType) {
  from.directed(fromType, toType, MSG_TOOL_ACTIVE);
  return to.receiveTag() == MSG_TOOL_ACTIVE;
}

}  // namespace

TEST_F(PostmasterTest, AFrameOfGarbageCostsOneLineAndIsForgotten) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  const std::string good = wireText({kFrameDirected, MSG_T_BUSY, NELKV, NELKVUI, 0});
  const auto with = [](FrameHeader header) { return wireText(header, "payload"); };
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"hello\n" + good, "characters that belong to no frame"},
      {std::string(1, '\0'), "shorter than a header"},
      {good.substr(2), "shorter than a header"},
      {"0" + good, "half a byte"},
      {with({kFrameDirected, MSG_T_BUSY, NELKV, NELKVUI, 6}), "length word"},
      {with({kFrameDirected, MSG_T_BUSY, NELKV, NELKVUI, -7}), "length word"},
      {with({2, MSG_T_BUSY, NELKV, NELKVUI, 7}), "neither directed nor undirected"},
      {with({kFrameDirected, MSG_T_BUSY, NELKV, NELGATE, 7}), "NELGATE, which is not connected"},
      {with({kFrameDirected, MSG_T_BUSY, NELKV, 99, 7}), "tool type 99, which is not connected"},
  };
  for (const auto& [bytes, complaint] : rows) {
    kv.sendBytes(bytes);
    EXPECT_TRUE(mpm.complains(complaint)) << complaint;
    EXPECT_TRUE(passes(kv, NELKV, ui, NELKVUI)) << complaint;
  }
}

TEST_F(PostmasterTest, AFloodOfFaultsIsToldInFewLines) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  for (int i = 0; i < 2000; ++i) {
    kv.sendBytes(std::string("?!") + '\0');
  }
  ASSERT_TRUE(passes(kv, NELKV, ui, NELKVUI));
  EXPECT_LE(mpm.complaintCount(), 5);

  mpm.signal(SIGTERM);
  ui.hangUp();
  kv.hangUp();
  EXPECT_EQ(mpm.exitStatus(), 0);
  EXPECT_THAT(mpm.errors(), HasSubstr("more since the last"));
}

TEST_F(PostmasterTest, AnEndlessFrameIsThrownAwayUpToItsEnd) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  kv.sendBytes(std::string(std::size_t{40} * kMaxFrameText, '0'));
  EXPECT_TRUE(mpm.complains("longer than 32868 bytes"));
  EXPECT_TRUE(passes(ui, NELKVUI, kv, NELKV));

  kv.sendBytes(std::string("00") + '\0');
  EXPECT_TRUE(passes(kv, NELKV, ui, NELKVUI));
  EXPECT_EQ(mpm.complaintCount(), 1);
}

TEST_F(PostmasterTest, ASlowClientHoldsItsSenderBackAndGetsAllFramesInOrder) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  TestClient gate = tool(NELGATE);
  std::string stream;
  int frames = 0;
  for (; stream.size() < 2 * postmaster::kMaxQueuedBytes; ++frames) {
    const std::string payload = wireString(std::string(16000, ' ') + std::to_string(frames));
    stream += wireText(
        {kFrameDirected, MSG_T_TEXT, NELKV, NELKVUI, static_cast<int>(payload.size())}, payload);
  }
  std::size_t sent = 0;
  const auto push = [&] {
    ssize_t count = 0;
    while (sent < stream.size() &&
           (count = send(kv.fd(), stream.data() + sent, stream.size() - sent,
                         MSG_DONTWAIT | MSG_NOSIGNAL)) > 0) {
      sent += static_cast<std::size_t>(count);
    }
  };
  ASSERT_TRUE(waitUntil([&] {
    constexpr int kLongEnough = 200;
    push();
    pollfd writable{kv.fd(), POLLOUT, 0};
    return poll(&writable, 1, kLongEnough) == 0;
  }));
  EXPECT_LT(sent, postmaster::kMaxQueuedBytes);
  EXPECT_TRUE(passes(gate, NELGATE, kv, NELKV)) << "others are served meanwhile";
  for (int i = 0; i < frames; ++i) {
    push();
    const auto message = ui.receive();
    ASSERT_TRUE(message.has_value());
    ASSERT_THAT(message->payload, testing::EndsWith(" " + std::to_string(i)));
  }
  EXPECT_EQ(mpm.errors(), "");
}

TEST_F(PostmasterTest, TheLastWordsOfASenderThatIsHeldBackAreHeard) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  // More than one client is held for, less than the sockets between take without a reader.
  const std::string text = wireString(std::string(16000, 'x'));
  constexpr int kFrames = 14;
  for (int i = 0; i < kFrames; ++i) {
    kv.directed(NELKV, NELKVUI, MSG_T_TEXT, text);
  }
  kv.hangUp();
  for (int i = 0; i < kFrames; ++i) {
    ASSERT_EQ(ui.receiveTag(), MSG_T_TEXT) << i;
  }
  EXPECT_EQ(ui.receiveTag(), MSG_TOOL_LEFT);
}

TEST_F(PostmasterTest, AClientThatDiesInTheMiddleOfAFrameIsNoticed) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  kv.sendBytes("0000");
  kv.hangUp();
  EXPECT_TRUE(mpm.complains("hung up in the middle of a frame"));
  EXPECT_EQ(ui.receiveTag(), MSG_TOOL_LEFT);
}
