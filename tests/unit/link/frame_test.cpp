#include <gmock/gmock.h>
#include <unistd.h>
#include <limits>
#include <string>
#include <vector>

#include "link/message_numbers.h"
#include "link/tool_interface.h"
#include "link/wire.h"
#include "tests/support/message.h"

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

struct Split {
  int tag = -9;
  int sender = -9;
  int length = -9;
  int dest = -9;
  std::string data;
  std::string errors;
};

// Takes `text` from a copy of its exact size; what ToolFrameDecode left alone shows as '!'.
Split split(const std::string& text) {
  const std::vector<char> exact(text.begin(), text.end());
  Split result;
  result.data.assign(kPayloadBufferBytes, '!');
  CaptureStderr();
  EXPECT_EQ(ToolFrameDecode(exact.data(), static_cast<int>(exact.size()), &result.tag,
                            &result.sender, result.data.data(), &result.length, &result.dest),
            1);
  result.errors = GetCapturedStderr();
  return result;
}

TEST(Frame, withoutPayloadIsFortyCharactersAndTheNul) {
  std::vector<char> text(100, 'x');
  ASSERT_EQ(encodeFrame({kFrameUndirected, MSG_TOOL_READY, NELKVUI, 0, 0}, nullptr, text), 41);
  EXPECT_STREQ(text.data(), "0100000029230000020000000000000000000000");
}

TEST(Frame, comesBackAsItWasBuilt) {
  const std::string payload("\x03\0\0\0abc", 7);
  std::vector<char> text(kMaxSentFrameText);
  const FrameHeader header{kFrameDirected, MSG_UI_COMMAND, NELKVUI, NELKV, 7};
  ASSERT_EQ(encodeFrame(header, payload.data(), text), 2 * (20 + 7) + 1);
  const Split result = split(text.data());
  EXPECT_EQ(result.tag, MSG_UI_COMMAND);
  EXPECT_EQ(result.sender, NELKVUI);
  EXPECT_EQ(result.dest, NELKV);
  EXPECT_EQ(result.length, 7);
  EXPECT_EQ(result.data.substr(0, 8), payload + "!");
  EXPECT_EQ(result.errors, "");
}

TEST(Frame, isBuiltUpToItsLargestSizeOnly) {
  const std::string payload(kMaxPayloadBytes + 1, 'p');
  std::vector<char> text(kMaxSentFrameText);
  EXPECT_EQ(encodeFrame({0, 0, 0, 0, kMaxPayloadBytes}, payload.data(), text), kMaxSentFrameText);
  for (const int length : {kMaxPayloadBytes + 1, -1, std::numeric_limits<int>::max(),
                           std::numeric_limits<int>::min()}) {
    EXPECT_EQ(encodeFrame({0, 0, 0, 0, length}, payload.data(), text), -1) << length;
  }
  text.resize(40);
  EXPECT_EQ(encodeFrame({0, 0, 0, 0, 0}, nullptr, text), -1);
}

TEST(ToolFrameDecode, readsTheWordsOfAShortFrameAndComplainsBelowSixteenBytes) {
  const std::string whole = wireText({0, 2000, NELKV, NELKVUI, 0}, "");
  for (std::size_t bytes = 0; bytes <= kFrameHeaderBytes; ++bytes) {
    const Split result = split(whole.substr(0, 2 * bytes));
    EXPECT_EQ(result.errors,
              bytes >= 16 ? ""
                          : std::string(FormatToolName(g_OwnToolType)) +
                                ":**ERR:Message received with illegal length information (len=" +
                                std::to_string(bytes) + "). NOT !!! Ignored.\n");
    EXPECT_EQ(result.tag, bytes >= 6 ? 2000 : bytes == 5 ? 2000 % 256 : 0) << bytes;
    EXPECT_EQ(result.dest, bytes > 12 ? NELKVUI : 0) << bytes;
  }
}

TEST(ToolFrameDecode, endsAtTheNulOrTheTextsLength) {
  const std::string text = wireText({0, 2000, NELKV, NELKVUI, 4}, "abcd");
  EXPECT_EQ(split(text + "4142").data.substr(0, 5), "abcd!");
  EXPECT_EQ(split(text.substr(0, 44)).data.substr(0, 3), "ab!");
}

TEST(ToolFrameDecode, keepsTheAnnouncedLengthAndStoresOnlyWhatCame) {
  EXPECT_EQ(split(wireText({0, 2000, 1, 2, 2}, "abcd")).data.substr(0, 3), "ab!");
  for (const int announced : {100, std::numeric_limits<int>::max()}) {
    const Split longer = split(wireText({0, 2000, 1, 2, announced}, "abcd"));
    EXPECT_EQ(longer.length, announced);
    EXPECT_EQ(longer.data.substr(0, 5), "abcd!");
  }
  const Split negative = split(wireText({0, 2000, 1, 2, -7}, "abcd"));
  EXPECT_EQ(negative.length, -7);
  EXPECT_EQ(negative.data[0], '!');
}

TEST(ToolFrameDecode, takesTheLargestFrameThatIsReceivedAndCutsALargerOne) {
  const int largest = kMaxReceivedFrameBytes - kFrameHeaderBytes;
  const std::string payload(static_cast<std::size_t>(largest), 'p');
  const Split result = split(wireText({0, 2000, 1, 2, largest}, payload));
  EXPECT_EQ(result.data.substr(0, payload.size() + 1), payload + "!");

  const std::string beyond(50000, 'p');
  EXPECT_EQ(split(wireText({0, 2000, 1, 2, 50000}, beyond)).length, 50000);
}

// Each runs in a process of its own, since the name is made once a process.
void printNames(std::initializer_list<int> types) {
  for (const int type : types) {
    std::fprintf(stderr, "%s;", FormatToolName(type));
  }
  _exit(0);
}

TEST(FormatToolName, keepsTheFirstKnownNameAndMakesUnknownOnesAnew) {
  GTEST_FLAG_SET(death_test_style, "fast");
  EXPECT_EXIT(printNames({NELKVUI, NELLINK, 6}), testing::ExitedWithCode(0),
              "^(NELKVUI\\(PID=[0-9]+,TOOLID=2\\);){3}$");
  EXPECT_EXIT(printNames({6, -1, NELMPM, NELKV}), testing::ExitedWithCode(0),
              "^-Unknown toolname-\\(PID=[0-9]+,TOOLID=6\\);"
              "-Unknown toolname-\\(PID=[0-9]+,TOOLID=-1\\);"
              "(NELMPM\\(PID=[0-9]+,TOOLID=4\\);){2}$");
}

}  // namespace
