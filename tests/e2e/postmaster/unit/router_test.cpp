#include "postmaster/router.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/message_numbers.h"
#include "postmaster/reports.h"

using postmaster::ClientId;
using postmaster::Delivery;
using postmaster::Message;
using postmaster::Router;
using postmaster::Routing;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr ClientId kUi = 10;
constexpr ClientId kKv = 11;
constexpr ClientId kGate = 12;

Message message(int sender, int dest, int tag) {
  return std::make_shared<postmaster::Envelope>(
      postmaster::Envelope{{kFrameDirected, tag, sender, dest, 0}, {}, {}});
}
Message undirected(int sender, int tag) {
  return std::make_shared<postmaster::Envelope>(
      postmaster::Envelope{{kFrameUndirected, tag, sender, 0, 0}, {}, {}});
}

/// Each delivery as "client: what the trace would say".
std::vector<std::string> shown(const Routing& routing) {
  std::vector<std::string> lines;
  for (const Delivery& delivery : routing.deliveries) {
    lines.push_back(std::to_string(delivery.client) + ": " +
                    postmaster::describeMessage(*delivery.message));
  }
  return lines;
}

class RouterTest : public testing::Test {
 protected:
  void SetUp() override {
    router.frameCame(kUi, message(NELKVUI, NELMPM, MSG_CONNECT));
    router.frameCame(kKv, message(NELKV, NELMPM, MSG_CONNECT));
  }
  std::string refusal(ClientId client, const Message& envelope) {
    const Routing routing = router.frameCame(client, envelope);
    EXPECT_THAT(routing.deliveries, IsEmpty());
    return routing.refusal;
  }

  Router router{{77, 1234, "it"}};
};

}  // namespace

TEST_F(RouterTest, DeniesWithTheReason) {
  const auto answer = [this](int type) {
    const Routing routing = router.frameCame(kGate, message(type, NELMPM, MSG_CONNECT));
    EXPECT_TRUE(routing.deliveries.at(0).closeAfterwards);
    EXPECT_NE(routing.refusal, "");
    return shown(routing);
  };
  EXPECT_THAT(answer(NELKV),
              ElementsAre("12: NELMPM -> NELKV MSG_CONNECT_DENIED(8001) 1 77 1234 1"));
  EXPECT_THAT(answer(NELMPM),
              ElementsAre("12: NELMPM -> NELMPM MSG_CONNECT_DENIED(8001) 4 77 1234 2"));
  EXPECT_THAT(answer(6),
              ElementsAre("12: NELMPM -> tool type 6 MSG_CONNECT_DENIED(8001) 6 77 1234 2"));
  router.shutDown(postmaster::ShutdownReason::kSignal, 500);
  EXPECT_THAT(answer(NELGATE),
              ElementsAre("12: NELMPM -> NELGATE MSG_CONNECT_DENIED(8001) 3 77 1234 3"));
}

TEST_F(RouterTest, NoToolSpeaksForAnotherOrForThePostmaster) {
  EXPECT_THAT(refusal(kKv, message(NELKVUI, NELKV, MSG_UI_COMMAND)),
              HasSubstr("in the name of NELKVUI"));
  for (const int tag :
       {MSG_CONNECT_OK, MSG_CONNECT_DENIED, MSG_TOOL_LEFT, MSG_SHUTDOWN, MSG_SHUTDOWN_NOW}) {
    EXPECT_THAT(refusal(kKv, message(NELKV, NELKVUI, tag)), HasSubstr("only the Postmaster"));
    EXPECT_THAT(refusal(kKv, undirected(NELKV, tag)), HasSubstr("only the Postmaster"));
  }
}

TEST_F(RouterTest, MessagesToThePostmasterMustMakeSense) {
  EXPECT_THAT(refusal(kKv, message(NELKV, NELMPM, MSG_CONNECT)), HasSubstr("a second time"));
  EXPECT_THAT(refusal(kKv, message(NELKV, NELMPM, MSG_SHUTDOWN_ACK)),
              HasSubstr("without a shutdown"));
  EXPECT_THAT(refusal(kKv, message(NELKV, NELMPM, MSG_T_TEXT)), HasSubstr("does not know"));
  EXPECT_THAT(refusal(kKv, undirected(NELKV, MSG_DISCONNECT)), HasSubstr("to others"));
  EXPECT_THAT(refusal(kKv, message(NELKV, NELKVUI, MSG_DISCONNECT)), HasSubstr("to others"));
  EXPECT_THAT(refusal(kGate, undirected(NELGATE, MSG_CONNECT)), HasSubstr("before the connection"));
}

TEST_F(RouterTest, AWarningWaitsUntilTheUserInterfaceIsReady) {
  EXPECT_THAT(shown(router.warnUser("C", "early")), IsEmpty());
  EXPECT_THAT(shown(router.frameCame(kUi, undirected(NELKVUI, MSG_TOOL_READY))),
              ElementsAre(HasSubstr("11: "), HasSubstr("MSG_START_POLL_TIMER"),
                          "10: NELMPM -> NELKVUI MSG_LINK_WARNING_BOX(11006) \"C\" \"early\""));
  EXPECT_THAT(shown(router.warnUser("C", "late")), ElementsAre(HasSubstr("\"late\"")));
}

TEST_F(RouterTest, ReadinessIsAnsweredHoweverItIsSent) {
  EXPECT_THAT(shown(router.frameCame(kKv, message(NELKV, NELMPM, MSG_TOOL_READY))),
              ElementsAre("11: NELMPM -> NELKV MSG_START_POLL_TIMER(9002)"));
  EXPECT_THAT(shown(router.frameCame(kKv, message(NELKV, NELKVUI, MSG_TOOL_READY))),
              ElementsAre("10: NELKV -> NELKVUI MSG_TOOL_READY(9001)",
                          "11: NELMPM -> NELKV MSG_START_POLL_TIMER(9002)"));
}
