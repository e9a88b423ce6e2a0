#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "link/message_numbers.h"
#include "postmaster/message.h"
#include "postmaster/options.h"
#include "postmaster/postmaster.h"
#include "postmaster/reports.h"
#include "tests/support/message.h"

using namespace postmaster;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::EndsWith;

namespace {

/// What the trace says of the parameters of `tag`, sent by the tester to the user interface.
std::string parameters(int tag, const std::string& payload) {
  const Envelope envelope{{kFrameDirected, tag, NELKV, NELKVUI, 0}, payload, {}};
  const std::string line = describeMessage(envelope);
  return line.substr(line.find(')') + 1);
}

std::optional<Options> options(std::vector<const char*> words) {
  words.insert(words.begin(), "nelmpm");
  return parseCommandLine(static_cast<int>(words.size()), words.data()).options;
}

}  // namespace

TEST(TraceFormat, ShowsAllKindsOfParameters) {
  EXPECT_EQ(parameters(MSG_T_ASK_LIST, wireString("a") + wireString("") + wireWord(-1) +
                                           wireWord(2) + wireString("x") + wireString("y")),
            " \"a\" \"\" -1 [\"x\", \"y\"]");
  EXPECT_EQ(parameters(MSG_T_TEXT, wireString(std::string_view("a\"\\\n\t\r\0\x7f\xe4", 9))),
            R"( "a\"\\\n\t\r\x00\x7f\xe4")");
  EXPECT_EQ(parameters(MSG_T_BUSY, ""), "");
}

TEST(TraceFormat, CutsLongTextAndLongListsAndTellsTheirSize) {
  EXPECT_EQ(parameters(MSG_T_TEXT, wireString(std::string(5000, 'x'))),
            " \"" + std::string(120, 'x') + "\"... 5000 bytes");
  std::string items;
  for (int i = 0; i < 1000; ++i) {
    items += wireString("i");
  }
  EXPECT_THAT(parameters(MSG_T_FIND, wireWord(0) + wireWord(0) + wireWord(1000) + items),
              EndsWith("\"i\"... 1000 items]"));
}

TEST(TraceFormat, ShowsAMalformedPayloadAsFarAsItGoes) {
  EXPECT_EQ(parameters(MSG_T_QUESTION, wireString("a") + wireWord(9) + "b"),
            " \"a\" <malformed, 10 bytes in all>");
  EXPECT_EQ(parameters(MSG_T_QUESTION, wireString("a") + wireWord(-9)),
            " \"a\" <malformed, 9 bytes in all>");
  EXPECT_THAT(
      parameters(MSG_T_FIND, wireWord(0) + wireWord(1) + wireWord(0x7fffffff) + wireString("x")),
      EndsWith("[\"x\"]<malformed, 17 bytes in all>"));
  EXPECT_EQ(parameters(MSG_T_BUSY, "abc"), " <3 bytes more>");
  EXPECT_EQ(parameters(4711, wireString("a")), " <5 bytes more>");
}

TEST(Splitter, FindsFramesWhereverTheStreamIsCut) {
  const std::string stream("first\0\0second\0rest", 18);
  for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
    FrameSplitter splitter;
    std::vector<std::string> frames;
    std::string frame;
    for (const std::string& part : {stream.substr(0, cut), stream.substr(cut)}) {
      splitter.append(part);
      while (splitter.next(frame) == FrameSplitter::Item::kFrame) {
        frames.push_back(frame);
      }
    }
    EXPECT_THAT(frames, ElementsAre(std::string("first\0", 6), std::string(1, '\0'),
                                    std::string("second\0", 7)))
        << cut;
    EXPECT_TRUE(splitter.isMidFrame());
  }
}

TEST(Splitter, TakesTheLongestFrameAndSkipsOneThatIsLonger) {
  FrameSplitter splitter;
  std::string frame;
  splitter.append(std::string(kMaxFrameText - 1, 'x') + '\0');
  EXPECT_EQ(splitter.next(frame), FrameSplitter::Item::kFrame);
  splitter.append(std::string(kMaxFrameText, 'x') + '\0' + "next" + '\0');
  EXPECT_EQ(splitter.next(frame), FrameSplitter::Item::kOversized);
  EXPECT_EQ(splitter.next(frame), FrameSplitter::Item::kFrame);
  EXPECT_EQ(frame, std::string("next\0", 5));
  EXPECT_FALSE(splitter.isMidFrame());
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

TEST(CommandLine, TakesSeveralToolsEachWithOneArgumentAndRefusesWhatIsNoCommand) {
  const auto parsed = options({"--tool", "nelkv", "--trace", "-", "--tool", "nelkvui -post"});
  ASSERT_TRUE(parsed.has_value());
  EXPECT_THAT(parsed->tools, ElementsAre(ElementsAre("nelkv"), ElementsAre("nelkvui", "-post")));
  EXPECT_EQ(parsed->traceFile, "-");
  const std::vector<std::vector<const char*>> wrong = {
      {"--tool", ""}, {"--tool", "'"}, {"--tool", "''"}, {"--tool"}, {"--tool", "nelkv", "stray"}};
  for (const std::vector<const char*>& words : wrong) {
    EXPECT_FALSE(options(words).has_value()) << words.back();
  }
}

TEST(ShutdownSteps, ComeInOrderAndEndWithTheLastProcess) {
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
  EXPECT_EQ(sequence.deadline(), now + ShutdownSequence::kTerminateTime);
  now += ShutdownSequence::kTerminateTime;
  EXPECT_EQ(sequence.advance(now, silent), Action::kKill);
  EXPECT_EQ(sequence.advance(now, {false, false, false, true}), Action::kFinish);
  EXPECT_EQ(sequence.deadline(), std::nullopt);
}

TEST(ShutdownSteps, WaitForThoseThatHaveAnsweredUntilSomeoneIsOutOfPatience) {
  using Action = ShutdownSequence::Action;
  const ShutdownSequence::Situation deciding{true, true, true, false};
  for (const bool hasEnded : {false, true}) {
    ShutdownSequence sequence;
    ShutdownSequence::TimePoint now{};
    sequence.begin(now);
    EXPECT_EQ(sequence.advance(now, deciding), Action::kOrderSilentTools);
    now += ShutdownSequence::kLeaveTime;
    EXPECT_EQ(sequence.advance(now, deciding), Action::kTellOfWaiting);
    EXPECT_EQ(sequence.advance(now + 24h, deciding), Action::kNone);
    EXPECT_EQ(sequence.deadline(), std::nullopt);
    if (!hasEnded) {
      sequence.hasten(now);
    }
    // A connection of a process that nobody started is nothing to wait for.
    EXPECT_EQ(sequence.advance(now, {true, !hasEnded, true, hasEnded}), Action::kTerminate);
  }
}
