#include <unistd.h>

#include "postmaster/reports.h"
#include "support/version.h"
#include "tests/e2e/postmaster/postmaster_fixture.h"

namespace {

/// A message as the trace would show it: sender, receiver, name, parameters.
std::string shown(const std::optional<postmaster::Envelope>& message) {
  return message ? postmaster::describeMessage(*message) : "nothing came";
}

}  // namespace

TEST_F(PostmasterTest, AcceptsAToolAndSaysWhoAndWhereItIs) {
  TestClient gate = tool(NELGATE);
  TestClient ui(mpm.socketPath());
  ui.directed(NELKVUI, NELMPM, MSG_CONNECT);

  const std::string pid = std::to_string(mpm.pid());
  EXPECT_EQ(shown(ui.receive()), "NELMPM -> NELKVUI MSG_CONNECT_OK(8000) 2 " + pid + " " +
                                     std::to_string(publishedPort()) + " 2 \"NELMPM " +
                                     kProductVersion + " (PID=" + pid + ")\"");
}

TEST_F(PostmasterTest, CarriesDirectedFramesByTypeAndUndirectedOnesToAllOthers) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  TestClient gate = tool(NELGATE);

  ui.directed(NELKVUI, NELKV, MSG_UI_COMMAND, wireString("go"));
  EXPECT_EQ(shown(kv.receive()), "NELKVUI -> NELKV MSG_UI_COMMAND(1002) \"go\"");

  kv.broadcast(NELKV, MSG_TOOL_READY);
  EXPECT_EQ(shown(ui.receive()), "NELKV -> * MSG_TOOL_READY(9001)");
  EXPECT_EQ(shown(gate.receive()), "NELKV -> * MSG_TOOL_READY(9001)");
  // Who is ready is told to poll by timer, and does not hear itself.
  EXPECT_EQ(shown(kv.receive()), "NELMPM -> NELKV MSG_START_POLL_TIMER(9002)");
}

TEST_F(PostmasterTest, CarriesTheLargestFrameThatAToolCanReceive) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  const std::string text(kMaxReceivedFrameBytes - kFrameHeaderBytes - sizeof(std::int32_t), 'x');

  kv.directed(NELKV, NELKVUI, MSG_T_TEXT, wireString(text));

  const auto message = ui.receive();
  ASSERT_TRUE(message.has_value());
  EXPECT_EQ(message->payload, wireString(text));
}

TEST_F(PostmasterTest, DeniesASecondToolOfATypeAndClosesItsConnection) {
  TestClient ui = tool(NELKVUI);
  TestClient second(mpm.socketPath());
  second.directed(NELKVUI, NELMPM, MSG_CONNECT);

  EXPECT_THAT(shown(second.receive()), testing::EndsWith(std::to_string(publishedPort()) + " 1"));
  EXPECT_TRUE(second.seesEnd());

  ui.broadcast(NELKVUI, MSG_TOOL_READY);
  EXPECT_EQ(ui.receiveTag(), MSG_START_POLL_TIMER);
}

TEST_F(PostmasterTest, TellsTheOthersWhichToolLeftAndWhetherItSaidSo) {
  TestClient ui = tool(NELKVUI);
  TestClient kv = tool(NELKV);
  TestClient gate = tool(NELGATE);

  gate.directed(NELGATE, NELMPM, MSG_DISCONNECT);
  EXPECT_EQ(shown(ui.receive()), "NELMPM -> NELKVUI MSG_TOOL_LEFT(8002) 3 1 \"NELGATE\"");
  EXPECT_EQ(kv.receiveTag(), MSG_TOOL_LEFT);

  kv.hangUp();
  EXPECT_EQ(shown(ui.receive()), "NELMPM -> NELKVUI MSG_TOOL_LEFT(8002) 1 2 \"NELKV\"");

  TestClient next = tool(NELKV);
  next.directed(NELKV, NELKVUI, MSG_T_IDLE);
  EXPECT_EQ(ui.receiveTag(), MSG_T_IDLE);
}

TEST_F(PostmasterTest, CanStillBeFoundAfterALeavingToolRemovedTheSocketsName) {
  TestClient kv = tool(NELKV);
  unlink(mpm.socketPath().c_str());
  kv.directed(NELKV, NELMPM, MSG_DISCONNECT);
  kv.hangUp();

  EXPECT_TRUE(waitUntil([this] { return TestClient(mpm.socketPath()).isOpen(); }));
  tool(NELKVUI);
}
