#include "postmaster/client.h"
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

TEST_F(PostmasterTest, AClientThatNeverReadsIsDroppedAtTheBoundOfItsQueue) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  TestClient gate = tool(NELGATE);
  const std::string text = wireString(std::string(16000, 'x'));
  const std::size_t frames = 2 * postmaster::kMaxQueuedBytes / (2 * text.size());
  for (std::size_t i = 0; i < frames && mpm.complaintCount() == 0; ++i) {
    kv.directed(NELKV, NELKVUI, MSG_T_TEXT, text);
  }

  EXPECT_TRUE(mpm.complains("NELKVUI (process"));
  EXPECT_THAT(mpm.errors(), HasSubstr("it does not read"));
  EXPECT_EQ(kv.receiveTag(), MSG_TOOL_LEFT);
  EXPECT_EQ(gate.receiveTag(), MSG_TOOL_LEFT);
}

TEST_F(PostmasterTest, ASlowClientThatReadsInTimeGetsAllOfItsFramesInOrder) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  constexpr int kFrames = 150;
  for (int i = 0; i < kFrames; ++i) {
    kv.directed(NELKV, NELKVUI, MSG_T_TEXT,
                wireString(std::string(10000, ' ') + std::to_string(i)));
  }
  for (int i = 0; i < kFrames; ++i) {
    const auto message = ui.receive();
    ASSERT_TRUE(message.has_value());
    ASSERT_THAT(message->payload, testing::EndsWith(" " + std::to_string(i)));
  }
}

TEST_F(PostmasterTest, AClientThatDiesInTheMiddleOfAFrameIsNoticed) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  kv.sendBytes("0000");
  kv.hangUp();
  EXPECT_TRUE(mpm.complains("hung up in the middle of a frame"));
  EXPECT_EQ(ui.receiveTag(), MSG_TOOL_LEFT);
}
