#include "link/message_codec.h"

#include <gmock/gmock.h>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "link/message_numbers.h"
#include "tests/support/message.h"
#include "tests/unit/link/allocation_control.h"

using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

constexpr auto kToUi = MessageDirection::kReceivedByUi;
constexpr auto kFromUi = MessageDirection::kSentByUi;

std::string encode(MessageDirection direction, int tag, const ToolMessage& message) {
  const int length = EncodeMessage(tag, message, g_EncodeBuffer, direction);
  EXPECT_GE(length, 0);
  return {g_EncodeBuffer.data(), static_cast<std::size_t>(std::max(length, 0))};
}

// Decodes a copy of exactly the payload's size, so that a sanitizer sees a read outside it.
int decode(int tag, const std::string& payload, ToolMessage& message) {
  const std::vector<char> exact(payload.begin(), payload.end());
  return DecodeMessage(tag, exact.data(), static_cast<int>(exact.size()), &message);
}

std::vector<std::string> texts(const StringListNode* head) {
  std::vector<std::string> all;
  for (; head != nullptr; head = head->next) {
    EXPECT_EQ(static_cast<std::size_t>(head->length), std::string(head->text).size());
    all.emplace_back(head->text);
  }
  return all;
}

TEST(MessageTable, findsRowsByDirectionAndKnowsNoOthers) {
  EXPECT_EQ(findMessage(MSG_T_ASK_LIST, kFromUi), nullptr);
  EXPECT_EQ(findMessage(MSG_UI_COMMAND, kToUi), nullptr);
  for (const int tag : {std::numeric_limits<int>::min(), -1, 0, 999, 1014, 2020, 13002,
                        std::numeric_limits<int>::max()}) {
    EXPECT_EQ(findMessage(tag, kToUi), nullptr) << tag;
    EXPECT_EQ(findMessage(tag, kFromUi), nullptr) << tag;
  }
}

TEST(MessageTable, hasTheAgreedMessagesAndTheirParameters) {
  const std::map<int, std::string_view> sent = {
      {1000, ""}, {1001, ""},  {1002, "S"}, {1003, ""},  {1004, "S"},  {1005, "S"}, {1006, "S"},
      {1007, ""}, {1008, "S"}, {1009, "L"}, {1010, "S"}, {1011, ""},   {1012, ""},  {1013, "S"},
      {7000, ""}, {7001, ""},  {7002, ""},  {9001, ""},  {10004, "S"}, {10007, ""},
  };
  const std::map<int, std::string_view> received = {
      {2000, "S"},     {2001, "SS"},   {2002, "S"},   {2003, "SS"},   {2004, "SS"},
      {2005, "SSIL"},  {2006, ""},     {2007, ""},    {2008, "S"},    {2009, "SSSS"},
      {2010, "SSL"},   {2011, "SS"},   {2012, "SS"},  {2013, "SS"},   {2014, ""},
      {2015, ""},      {2016, "SS"},   {2017, "IIL"}, {2018, "SSIL"}, {2019, "SSII"},
      {8000, "IIIIS"}, {8001, "IIII"}, {8002, "IIS"}, {9000, ""},     {9001, ""},
      {9002, ""},      {9003, ""},     {11004, "S"},  {11006, "SS"},  {13000, "IIII"},
      {13001, ""},
  };
  std::map<int, std::string_view> found[2];
  for (const MessageRow& row : messageTable()) {
    found[row.direction == kToUi ? 1 : 0].emplace(row.tag, row.shape);
  }
  EXPECT_EQ(found[0], sent);
  EXPECT_EQ(found[1], received);
}

TEST(EncodeMessage, laysParametersEndToEnd) {
  StringList items;
  items.append("one");
  items.append("");
  items.append("three");
  const ToolMessage message = ToolMessage()
                                  .setText(0, "Title")
                                  .setText(1, nullptr)
                                  .setNumber(2, -2)
                                  .setList(3, items.head());
  EXPECT_EQ(encode(kToUi, MSG_T_ASK_LIST, message),
            wireString("Title") + wireWord(0) + wireWord(-2) + wireWord(3) + wireString("one") +
                wireWord(0) + wireString("three"));
}

TEST(EncodeMessage, takesListLengthsFromTheTexts) {
  std::string text = "abc";
  StringListNode node{nullptr, 77, text.data()};
  EXPECT_EQ(encode(kFromUi, MSG_UI_BITS, ToolMessage().setList(0, &node)),
            wireWord(1) + wireString("abc"));
}

TEST(EncodeMessage, refusesWhatDoesNotFitAndGivesAnUnknownMessageNothing) {
  const ToolMessage message = ToolMessage().setText(0, "title").setText(1, "text");
  for (std::size_t size = 0; size < 17; ++size) {
    std::vector<char> small(size);
    EXPECT_EQ(EncodeMessage(MSG_T_QUESTION, message, small, kToUi), kEncodeFailed) << size;
  }
  EXPECT_EQ(encode(kFromUi, 4711, message), "");
}

TEST(DecodeMessage, givesBackWhatAnyRowEncodes) {
  StringList items;
  items.append("first");
  items.append("second");
  for (const MessageRow& row : messageTable()) {
    ToolMessage sent;
    for (int i = 0; i < static_cast<int>(row.shape.size()); ++i) {
      switch (row.shape[static_cast<std::size_t>(i)]) {
        case kIntegerParameter:
          sent.setNumber(i, -1 - i);
          break;
        case kListParameter:
          sent.setList(i, items.head());
          break;
        default:
          sent.setText(i, "some text");
      }
    }
    const std::string payload = encode(row.direction, row.tag, sent);
    ToolMessage got{9, 9, 9, 9, 9};
    ASSERT_EQ(DecodeMessage(row.tag, payload.data(), static_cast<int>(payload.size()), &got,
                            row.direction),
              kDecodeOk)
        << row.name;
    for (int i = 0; i < kMaxParameters; ++i) {
      const char letter =
          i < static_cast<int>(row.shape.size()) ? row.shape[static_cast<std::size_t>(i)] : ' ';
      if (letter == kIntegerParameter) {
        EXPECT_EQ(got.word(i), -1 - i) << row.name;
      } else if (letter == kListParameter) {
        EXPECT_THAT(texts(got.list(i)), ElementsAre("first", "second")) << row.name;
      } else if (letter == kStringParameter) {
        EXPECT_STREQ(got.text(i), "some text") << row.name;
      } else {
        EXPECT_EQ(got.word(i), 9) << "unused words stay: " << row.name;
      }
    }
    FreeMessage(row.tag, &got, row.direction);
  }
}

TEST(DecodeMessage, decodesAnEmptyListAsNullAndAnEmptyTextAsEmpty) {
  ToolMessage message{1, 1, 1, 1, 1};
  EXPECT_EQ(decode(MSG_T_ASK_BITS, wireWord(0) + wireString("x") + wireWord(0), message),
            kDecodeOk);
  EXPECT_STREQ(message.text(0), "");
  EXPECT_EQ(message.list(2), nullptr);
  FreeMessage(MSG_T_ASK_BITS, &message);
  EXPECT_EQ(message.w0, 0);
  FreeMessage(MSG_T_ASK_BITS, &message);  // nothing left, nothing done
}

TEST(DecodeMessage, putsABlankInPlaceOfANul) {
  const std::string text("a\0b\0", 4);
  ToolMessage message;
  EXPECT_EQ(decode(MSG_T_ASK_BITS, wireString(text) + wireWord(0) + wireWord(1) + wireString(text),
                   message),
            kDecodeOk);
  EXPECT_STREQ(message.text(0), "a b ");
  EXPECT_THAT(texts(message.list(2)), ElementsAre("a b "));
  FreeMessage(MSG_T_ASK_BITS, &message);
}

struct LengthCase {
  const char* what;
  int tag;
  std::string payload;
  long position;
};

TEST(DecodeMessage, reportsPositionAndLengthWhenTheyDiffer) {
  const std::vector<LengthCase> cases = {
      {"payload of a message without parameters", MSG_T_EXIT_CONFIRM, "abcd", 0},
      {"payload of an unknown message", 4711, "a", 0},
      {"bytes left over", MSG_T_TEXT, wireString("text") + "!", 8},
      {"no payload", MSG_T_TEXT, "", 4},
      {"cut count", MSG_T_TEXT, "abc", 4},
      {"count past the end", MSG_T_TEXT, wireWord(100) + "abc", 104},
      {"largest count", MSG_T_TEXT, wireWord(std::numeric_limits<int>::max()) + "abc", 2147483651},
      {"negative count", MSG_T_TEXT, wireWord(-4) + "abc", 0},
      {"negative count in the second text", MSG_T_QUESTION, wireString("ab") + wireWord(-1), 9},
      {"cut integer", MSG_T_ASK_RANGE, wireWord(0) + wireWord(0) + wireWord(1) + "ab", 16},
      {"list longer than its elements", MSG_T_ASK_BITS,
       wireWord(0) + wireWord(0) + wireWord(9) + wireString("a"), 21},
      {"negative list", MSG_T_ASK_BITS, wireWord(0) + wireWord(0) + wireWord(-1), 11},
      {"element past the end", MSG_T_ASK_BITS,
       wireWord(0) + wireWord(0) + wireWord(1) + wireWord(50), 66},
  };
  for (const LengthCase& item : cases) {
    ToolMessage message{1, 1, 1, 1, 1};
    CaptureStderr();
    EXPECT_EQ(decode(item.tag, item.payload, message), kDecodeLengthWrong) << item.what;
    EXPECT_EQ(GetCapturedStderr(),
              "**ERR:Message Decoder : Expected BufferLength=" + std::to_string(item.position) +
                  ", Got Length=" + std::to_string(item.payload.size()) + "\n")
        << item.what;
    FreeMessage(item.tag, &message);  // allowed, and nothing is left to release
  }
}

TEST(DecodeMessage, refusesEveryCutOfAPayload) {
  const std::string payload = wireString("title") + wireString("text") + wireWord(1) + wireWord(2) +
                              wireString("one") + wireString("two");
  for (std::size_t length = 0; length < payload.size(); ++length) {
    ToolMessage message;
    CaptureStderr();
    ASSERT_EQ(decode(MSG_T_ASK_LIST, payload.substr(0, length), message), kDecodeLengthWrong)
        << length;
    GetCapturedStderr();
    EXPECT_EQ(message.w0, 0);
    EXPECT_EQ(message.w3, 0);
  }
}

TEST(DecodeMessage, neverReadsMoreThanAPayloadBufferWhateverTheLength) {
  const std::vector<char> buffer(kPayloadBufferBytes);
  for (const int length : {-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
                           kPayloadBufferBytes + 1}) {
    for (const int tag : {+MSG_T_EXIT, +MSG_T_FIND, +MSG_T_TEXT}) {
      ToolMessage message;
      CaptureStderr();
      EXPECT_EQ(DecodeMessage(tag, buffer.data(), length, &message), kDecodeLengthWrong);
      EXPECT_THAT(GetCapturedStderr(),
                  testing::EndsWith("Got Length=" + std::to_string(length) + "\n"));
    }
  }
}

TEST(DecodeMessage, leavesWhatItHasWhenMemoryRunsOut) {
  const std::string payload =
      wireString("a") + wireString("b") + wireWord(2) + wireString("c") + wireString("d");
  constexpr long kBlocks = 6;
  for (long successes = 0; successes < kBlocks; ++successes) {
    ToolMessage message{1, 1, 1, 1, 1};
    int result = 0;
    {
      const FailingAllocation failing(successes);
      result =
          DecodeMessage(MSG_T_ASK_BITS, payload.data(), static_cast<int>(payload.size()), &message);
    }
    EXPECT_EQ(result, kDecodeNoMemory) << successes;
    EXPECT_EQ(message.text(0) != nullptr, successes >= 1);
    EXPECT_EQ(message.text(1) != nullptr, successes >= 2);
    EXPECT_EQ(texts(message.list(2)).size(), successes >= 4 ? 1U : 0U);
    FreeMessage(MSG_T_ASK_BITS, &message);
  }
}

}  // namespace
