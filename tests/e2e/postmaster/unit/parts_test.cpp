#include <gmock/gmock.h>

#include "link/message_numbers.h"
#include "postmaster/postmaster.h"
#include "tests/support/message.h"

using namespace postmaster;
using namespace std::chrono_literals;
using testing::HasSubstr;

namespace {

postmaster::Message message(int sender, int dest, int tag, const std::string& payload = {}) {
  const int kind = dest == 0 ? kFrameUndirected : kFrameDirected;
  return std::make_shared<Envelope>(Envelope{{kind, tag, sender, dest, 0}, payload, {}});
}

TEST(TraceFormat, ShowsParametersAsFarAsTheyGoAndCutsLongOnes) {
  const std::string item = wireString("i");
  const std::tuple<int, std::string, std::string> rows[] = {
      {2000, wireString(std::string_view("a\"\\\n\t\r\0\x7f\xe4", 9)),
       R"("a\"\\\n\t\r\x00\x7f\xe4")"},
      {2000, wireString(std::string(121, 'x')), '"' + std::string(120, 'x') + "\"... 121 bytes"},
      {2001, item + wireWord(-9), "\"i\" <malformed, 9 bytes in all>"},
      {2017, wireWord(-1) + wireWord(0) + wireWord(2) + item + item, "-1 0 [\"i\", \"i\"]"},
      {2017, wireWord(0) + wireWord(0) + wireWord(9) + item,
       "0 0 [\"i\"]<malformed, 17 bytes in all>"},
      {2014, "abc", "<3 bytes more>"},
      {4711, "abc", "<3 bytes more>"},
  };
  for (const auto& [tag, payload, text] : rows) {
    const std::string line = describeMessage(*message(NELKV, NELKVUI, tag, payload));
    EXPECT_EQ(line.substr(line.find(')') + 2), text);
  }
}

TEST(CommandSplitting, FollowsQuotesAndBackslashes) {
  EXPECT_THAT(splitCommand("  a\t-b 'c \"d\\' \"e 'f\\\"\" g\\ h '' x\"y\"z ").words,
              testing::ElementsAre("a", "-b", "c \"d\\", "e 'f\"", "g h", "", "xyz"));
  for (const auto& [wrong, fault] : {std::pair{"a 'b", "a ' is not closed"},
                                     {"a \"b", "a \" is not closed"},
                                     {"a\\", "nothing follows the \\ at its end"},
                                     {" ", "it names no program"}}) {
    EXPECT_EQ(splitCommand(wrong).fault, fault) << wrong;
  }
}

/// What is done in twelve seconds and when, each with the time up to which it is waited then.
std::string steps(const ShutdownSequence::Situation& situation, int hastened = -1) {
  ShutdownSequence sequence;
  const ShutdownSequence::TimePoint start{};
  EXPECT_EQ(sequence.advance(start + 24h, situation), ShutdownSequence::Action::kNone);
  sequence.begin(start);
  std::string all;
  for (int ms = 0; ms < 12000; ++ms) {
    const auto now = start + std::chrono::milliseconds(ms);
    if (ms == hastened) {
      sequence.hasten(now);
    }
    const auto action = static_cast<std::size_t>(sequence.advance(now, situation));
    if (action != 0) {
      const char* const names[] = {"", "order", "tell", "terminate", "kill", "finish"};
      const auto due = sequence.deadline();
      all += std::to_string(ms) + " " + names[action] +
             (due ? " " + std::to_string((*due - start) / 1ms) : "") + ", ";
    }
  }
  return all;
}

TEST(ShutdownSteps, ComeInOrderAndWaitForThoseThatHaveAnswered) {
  EXPECT_EQ(steps({false, true, false, true}),
            "1000 order 3000, 3000 terminate 4000, 4000 kill 6000, 6000 finish, ");
  EXPECT_EQ(steps({true, true, true, false}, 5000),
            "0 order 2000, 2000 tell, 5000 terminate 6000, 6000 kill 8000, 8000 finish, ");
  EXPECT_EQ(steps({true, false, true, true}), "0 order 2000, 2000 terminate 3000, 2001 finish, ");
}

TEST(Router, RefusesWhatMakesNoSenseAndKeepsWarningsForAWindowThatIsNotReady) {
  constexpr ClientId kUi = 10;
  constexpr ClientId kKv = 11;
  Router router{{77, 1234, "it"}};
  const std::tuple<ClientId, int, int, int, const char*> rows[] = {
      {kKv, NELKV, 0, MSG_CONNECT, "before the connection"},
      {kKv, NELMPM, NELMPM, MSG_CONNECT, "no tool of this type"},
      {kUi, NELKVUI, NELMPM, MSG_CONNECT, ""},
      {kKv, NELKV, NELMPM, MSG_CONNECT, ""},
      {kKv, NELKVUI, NELKV, MSG_UI_COMMAND, "in the name of NELKVUI"},
      {kKv, NELKV, NELKVUI, MSG_CONNECT_OK, "only the Postmaster"},
      {kKv, NELKV, NELKVUI, MSG_SHUTDOWN_NOW, "only the Postmaster"},
      {kKv, NELKV, NELMPM, MSG_CONNECT, "a second time"},
      {kKv, NELKV, NELMPM, MSG_SHUTDOWN_ACK, "without a shutdown"},
      {kKv, NELKV, NELMPM, MSG_T_TEXT, "does not know"},
      {kKv, NELKV, NELKVUI, MSG_DISCONNECT, "to others"},
  };
  for (const auto& [client, sender, dest, tag, refusal] : rows) {
    EXPECT_THAT(router.frameCame(client, message(sender, dest, tag)).refusal, HasSubstr(refusal));
  }
  EXPECT_TRUE(router.warnUser("C", "early").deliveries.empty());
  const Routing ready = router.frameCame(kUi, message(NELKVUI, 0, MSG_TOOL_READY));
  ASSERT_EQ(ready.deliveries.size(), 3U);
  EXPECT_EQ(describeMessage(*ready.deliveries[2].message),
            "NELMPM -> NELKVUI MSG_LINK_WARNING_BOX(11006) \"C\" \"early\"");
  EXPECT_EQ(router.warnUser("C", "late").deliveries.size(), 1U);
}

}  // namespace
