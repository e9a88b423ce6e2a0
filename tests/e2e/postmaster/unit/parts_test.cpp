#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

#include "link/message_numbers.h"
#include "postmaster/complaints.h"
#include "postmaster/frame_splitter.h"
#include "postmaster/options.h"
#include "postmaster/shutdown_sequence.h"
#include "postmaster/trace_format.h"

using namespace postmaster;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Optional;

namespace {

std::string word(std::int32_t value) {
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

std::string text(std::string_view value) {
  return word(static_cast<std::int32_t>(value.size())).append(value);
}

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
  EXPECT_EQ(
      parameters(MSG_T_ASK_LIST, text("a") + text("") + word(-1) + word(2) + text("x") + text("y")),
      " \"a\" \"\" -1 [\"x\", \"y\"]");
  EXPECT_EQ(parameters(MSG_T_TEXT, text(std::string_view("a\"\\\n\t\r\0\x7f\xe4", 9))),
            R"( "a\"\\\n\t\r\x00\x7f\xe4")");
  EXPECT_EQ(parameters(MSG_T_BUSY, ""), "");
}

TEST(TraceFormat, CutsLongTextAndLongListsAndTellsTheirSize) {
  EXPECT_EQ(parameters(MSG_T_TEXT, text(std::string(5000, 'x'))),
            " \"" + std::string(120, 'x') + "\"... 5000 bytes");
  std::string items;
  for (int i = 0; i < 1000; ++i) {
    items += text("i");
  }
  EXPECT_THAT(parameters(MSG_T_FIND, word(0) + word(0) + word(1000) + items),
              EndsWith("\"i\"... 1000 items]"));
}

TEST(TraceFormat, ShowsAMalformedPayloadAsFarAsItGoes) {
  EXPECT_EQ(parameters(MSG_T_QUESTION, text("a") + word(9) + "b"),
            " \"a\" <malformed, 10 bytes in all>");
  EXPECT_EQ(parameters(MSG_T_QUESTION, text("a") + word(-9)), " \"a\" <malformed, 9 bytes in all>");
  EXPECT_THAT(parameters(MSG_T_FIND, word(0) + word(1) + word(0x7fffffff) + text("x")),
              EndsWith("[\"x\"]<malformed, 17 bytes in all>"));
  EXPECT_EQ(parameters(MSG_T_BUSY, "abc"), " <3 bytes more>");
  EXPECT_EQ(parameters(4711, text("a")), " <5 bytes more>");
}

TEST(TraceFormat, TakesTheRowOfTheDirection) {
  const auto label = [](int sender, int tag) {
    return describeMessage({{kFrameUndirected, tag, sender, 0, 0}, {}, {}});
  };
  EXPECT_EQ(label(NELKV, MSG_CONNECT), "NELKV -> * MSG_CONNECT(7000)");
  EXPECT_EQ(label(NELKVUI, MSG_TOOL_READY), "NELKVUI -> * MSG_TOOL_READY(9001)");
  EXPECT_EQ(label(6, 4711), "tool type 6 -> * unknown(4711)");
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
    EXPECT_THAT(frames, ElementsAre("first", "", "second")) << cut;
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
  EXPECT_EQ(frame, "next");
  EXPECT_FALSE(splitter.isMidFrame());
}

TEST(CommandSplitting, FollowsQuotesAndBackslashes) {
  EXPECT_THAT(splitCommand("  nelkvui\t-post  -t/tmp "),
              Optional(ElementsAre("nelkvui", "-post", "-t/tmp")));
  EXPECT_THAT(splitCommand(R"(a 'b "c\' "d 'e\"" f\ g '' x"y"z)"),
              Optional(ElementsAre("a", "b \"c\\", "d 'e\"", "f g", "", "xyz")));
  EXPECT_THAT(splitCommand(" "), Optional(testing::IsEmpty()));
  for (const char* wrong : {"a 'b", "a \"b", "a\\"}) {
    EXPECT_EQ(splitCommand(wrong), std::nullopt) << wrong;
  }
}

TEST(CommandLine, TakesSeveralToolsEachWithOneArgument) {
  const auto parsed = options({"--tool", "nelkv", "--trace", "-", "--tool", "nelkvui -post"});
  ASSERT_TRUE(parsed.has_value());
  EXPECT_THAT(parsed->tools, ElementsAre(ElementsAre("nelkv"), ElementsAre("nelkvui", "-post")));
  EXPECT_EQ(parsed->traceFile, "-");
}

TEST(CommandLine, RefusesWhatIsNoCommand) {
  for (const std::vector<const char*>& wrong :
       std::vector<std::vector<const char*>>{{"--tool", ""},
                                             {"--tool", "'"},
                                             {"--tool", "''"},
                                             {"--tool"},
                                             {"stray"},
                                             {"--tool", "nelkv", "stray"}}) {
    EXPECT_FALSE(options(wrong).has_value()) << wrong.back();
  }
}

TEST(ShutdownSteps, ComeInOrderAndEndWithTheLastProcess) {
  using Action = ShutdownSequence::Action;
  ShutdownSequence sequence;
  ShutdownSequence::TimePoint now{};
  const ShutdownSequence::Situation silent{false, true, true};
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
  EXPECT_EQ(sequence.advance(now, {false, false, true}), Action::kFinish);
  EXPECT_EQ(sequence.deadline(), std::nullopt);
}

TEST(ShutdownSteps, WaitNoLongerThanForTheLastAnswer) {
  using Action = ShutdownSequence::Action;
  ShutdownSequence sequence;
  sequence.begin({});
  EXPECT_EQ(sequence.advance({}, {true, true, true}), Action::kOrderSilentTools);
  EXPECT_EQ(sequence.advance({}, {true, false, true}), Action::kNone);
  EXPECT_EQ(sequence.advance({}, {true, false, false}), Action::kFinish);
}

TEST(ComplaintLines, AreToldOnceASecondWithTheCountOfTheRest) {
  std::ostringstream output;
  Complaints::TimePoint now{};
  Complaints complaints(output, [&] { return now; });
  for (int i = 0; i < 3; ++i) {
    complaints.say("bad");
    complaints.say("worse " + std::to_string(i));
  }
  now += 1s;
  complaints.say("bad");
  complaints.say("bad");
  complaints.flush();
  EXPECT_EQ(output.str(),
            "nelmpm: bad\nnelmpm: worse 0\nnelmpm: worse 1\nnelmpm: worse 2\n"
            "nelmpm: bad [2 more since the last]\nnelmpm: bad [1 more since the last]\n");
}
