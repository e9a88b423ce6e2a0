#include <gmock/gmock.h>

#include "link/message_numbers.h"
#include "postmaster/postmaster.h"
#include "tests/support/message.h"

using namespace postmaster;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

postmaster::Message message(int sender, int dest, int tag, const std::string& payload = {}) {
  const int kind = dest == 0 ? kFrameUndirected : kFrameDirected;
  return std::make_shared<Envelope>(Envelope{{kind, tag, sender, dest, 0}, payload, {}});
}

/// What the trace says of the parameters of `tag`, sent by the tester to the user interface.
std::string parameters(int tag, const std::string& payload) {
  const std::string line = describeMessage(*message(NELKV, NELKVUI, tag, payload));
  return line.substr(line.find(')') + 1);
}

}  // namespace

TEST(TraceFormat, ShowsParametersAsFarAsTheyGoAndCutsLongOnes) {
  EXPECT_EQ(parameters(MSG_T_ASK_LIST, wireString("a") + wireString("") + wireWord(-1) +
                                           wireWord(2) + wireString("x") + wireString("y")),
            " \"a\" \"\" -1 [\"x\", \"y\"]");
  EXPECT_EQ(parameters(MSG_T_TEXT, wireString(std::string_view("a\"\\\n\t\r\0\x7f\xe4", 9))),
            R"( "a\"\\\n\t\r\x00\x7f\xe4")");
  EXPECT_EQ(parameters(MSG_T_TEXT, wireString(std::string(5000, 'x'))),
            " \"" + std::string(120, 'x') + "\"... 5000 bytes");
  std::string items;
  for (int i = 0; i < 1000; ++i) {
    items += wireString("i");
  }
  EXPECT_THAT(parameters(MSG_T_FIND, wireWord(0) + wireWord(0) + wireWord(1000) + items),
              EndsWith("\"i\"... 1000 items]"));
  EXPECT_EQ(parameters(MSG_T_QUESTION, wireString("a") + wireWord(-9)),
            " \"a\" <malformed, 9 bytes in all>");
  EXPECT_THAT(parameters(MSG_T_FIND, wireWord(0) + wireWord(1) + wireWord(9) + wireString("x")),
              EndsWith("[\"x\"]<malformed, 17 bytes in all>"));
  EXPECT_EQ(parameters(MSG_T_BUSY, "abc"), " <3 bytes more>");
  EXPECT_EQ(parameters(4711, wireString("a")), " <5 bytes more>");
}

TEST(CommandSplitting, FollowsQuotesAndBackslashes) {
  EXPECT_THAT(splitCommand("  nelkvui\t-post  -t/tmp ").words,
              ElementsAre("nelkvui", "-post", "-t/tmp"));
  EXPECT_THAT(splitCommand(R"(a 'b "c\' "d 'e\"" f\ g '' x"y"z)").words,
              ElementsAre("a", "b \"c\\", "d 'e\"", "f g", "", "xyz"));
  for (const auto& [wrong, fault] : {std::pair{"a 'b", "a ' is not closed"},
                                     {"a \"b", "a \" is not closed"},
                                     {"a\\", "nothing follows the \\ at its end"},
                                     {" ", "it names no program"}}) {
    EXPECT_EQ(splitCommand(wrong).fault, fault) << wrong;
  }
}

TEST(ShutdownSteps, ComeInOrderAndWaitForThoseThatHaveAnswered) {
  using Action = ShutdownSequence::Action;
  ShutdownSequence sequence;
  ShutdownSequence::TimePoint now{};
  const ShutdownSequence::Situation silent{false, true, false, true};
  EXPECT_EQ(sequence.advance(now, silent), Action::kNone);
  sequence.begin(now);
  EXPECT_EQ(sequence.advance(now + 999ms, silent), Action::kNone);
  now += ShutdownSequence::kAnswerTime;
  EXPECT_EQ(sequence.advance(now, silent), Action::kOrderSilentTools);
  EXPECT_EQ(sequence.advance(now, silent), Action::kNone);
  sequence.hasten(now);
  EXPECT_EQ(sequence.advance(now, silent), Action::kTerminate);
  now += ShutdownSequence::kTerminateTime;
  EXPECT_EQ(sequence.advance(now, silent), Action::kKill);
  EXPECT_EQ(sequence.advance(now, {false, false, false, true}), Action::kFinish);

  const ShutdownSequence::Situation deciding{true, true, true, false};
  sequence = ShutdownSequence();
  sequence.begin(now);
  EXPECT_EQ(sequence.advance(now, deciding), Action::kOrderSilentTools);
  now += ShutdownSequence::kLeaveTime;
  EXPECT_EQ(sequence.advance(now, deciding), Action::kTellOfWaiting);
  EXPECT_EQ(sequence.advance(now + 24h, deciding), Action::kNone);
  sequence.hasten(now);
  EXPECT_EQ(sequence.advance(now, deciding), Action::kTerminate);
}

TEST(Router, RefusesWhatMakesNoSenseAndKeepsWarningsForAWindowThatIsNotReady) {
  constexpr ClientId kUi = 10;
  constexpr ClientId kKv = 11;
  Router router{{77, 1234, "it"}};
  const auto refusal = [&](ClientId client, int sender, int dest, int tag) {
    return router.frameCame(client, message(sender, dest, tag)).refusal;
  };
  EXPECT_THAT(refusal(kKv, NELKV, 0, MSG_CONNECT), HasSubstr("before the connection"));
  EXPECT_THAT(refusal(kKv, NELMPM, NELMPM, MSG_CONNECT), HasSubstr("no tool of this type"));
  EXPECT_EQ(refusal(kUi, NELKVUI, NELMPM, MSG_CONNECT), "");
  EXPECT_EQ(refusal(kKv, NELKV, NELMPM, MSG_CONNECT), "");
  EXPECT_THAT(refusal(kKv, NELKVUI, NELKV, MSG_UI_COMMAND), HasSubstr("in the name of NELKVUI"));
  for (const int tag :
       {MSG_CONNECT_OK, MSG_CONNECT_DENIED, MSG_TOOL_LEFT, MSG_SHUTDOWN, MSG_SHUTDOWN_NOW}) {
    EXPECT_THAT(refusal(kKv, NELKV, NELKVUI, tag), HasSubstr("only the Postmaster"));
  }
  EXPECT_THAT(refusal(kKv, NELKV, NELMPM, MSG_CONNECT), HasSubstr("a second time"));
  EXPECT_THAT(refusal(kKv, NELKV, NELMPM, MSG_SHUTDOWN_ACK), HasSubstr("without a shutdown"));
  EXPECT_THAT(refusal(kKv, NELKV, NELMPM, MSG_T_TEXT), HasSubstr("does not know"));
  EXPECT_THAT(refusal(kKv, NELKV, NELKVUI, MSG_DISCONNECT), HasSubstr("to others"));

  EXPECT_TRUE(router.warnUser("C", "early").deliveries.empty());
  const Routing ready = router.frameCame(kUi, message(NELKVUI, 0, MSG_TOOL_READY));
  ASSERT_EQ(ready.deliveries.size(), 3U);
  EXPECT_EQ(describeMessage(*ready.deliveries[2].message),
            "NELMPM -> NELKVUI MSG_LINK_WARNING_BOX(11006) \"C\" \"early\"");
  EXPECT_EQ(router.warnUser("C", "late").deliveries.size(), 1U);
}
