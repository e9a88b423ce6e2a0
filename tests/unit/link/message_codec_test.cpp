#include "link/message_codec.h"

#include <gmock/gmock.h>

#include <limits>

#include "link/message_numbers.h"
#include "link/port_control.h"
#include "tests/support/message.h"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

constexpr auto kToUi = MessageDirection::kReceivedByUi;
constexpr auto kFromUi = MessageDirection::kSentByUi;
constexpr int kHuge = std::numeric_limits<int>::max();

/// Decodes a copy of exactly the payload's size, so that a sanitizer sees a read outside it.
int decode(int tag, const std::string& payload, ToolMessage& message) {
  const std::vector<char> exact(payload.begin(), payload.end());
  return DecodeMessage(tag, exact.data(), static_cast<int>(exact.size()), &message);
}

/// The texts of a list, each with its length.
std::string shown(const StringListNode* head) {
  std::string all;
  for (; head != nullptr; head = head->next) {
    all += std::string(head->text) + "/" + std::to_string(head->length) + " ";
  }
  return all;
}

TEST(MessageTable, hasTheAgreedMessagesAndTheirParametersAndNoOthers) {
  std::string found;
  for (const MessageDirection direction : {kFromUi, kToUi}) {
    for (int tag = -1; tag < 14000; ++tag) {
      if (const MessageRow* row = findMessage(tag, direction)) {
        found += std::to_string(row->tag) + std::string(row->shape) + " ";
      }
    }
  }
  EXPECT_EQ(found,
            "1000 1001 1002S 1003 1004S 1005S 1006S 1007 1008S 1009L 1010S 1011 1012 1013S "
            "7000 7001 7002 9001 10004S 10007 "
            "2000S 2001SS 2002S 2003SS 2004SS 2005SSIL 2006 2007 2008S 2009SSSS 2010SSL 2011SS "
            "2012SS 2013SS 2014 2015 2016SS 2017IIL 2018SSIL 2019SSII 8000IIIIS 8001IIII 8002IIS "
            "9000 9001 9002 9003 11004S 11006SS 13000IIII 13001 ");
}

TEST(EncodeMessage, laysParametersEndToEndOrWritesNone) {
  std::string text = "three";
  StringListNode last{nullptr, 77, text.data()};  // the length is that of the text
  StringListNode first{&last, 0, nullptr};
  const ToolMessage message = ToolMessage().setText(0, "Title").setNumber(2, -2).setList(3, &first);
  const std::string payload = wireString("Title") + wireWord(0) + wireWord(-2) + wireWord(2) +
                              wireWord(0) + wireString("three");
  const auto encode = [&](std::size_t size, MessageDirection direction) {
    std::string bytes(size, '!');
    const int used = EncodeMessage(MSG_T_ASK_LIST, message, bytes, direction);
    return used < 0 ? std::to_string(used) : bytes.substr(0, static_cast<std::size_t>(used));
  };
  EXPECT_EQ(encode(99, kToUi), payload);
  EXPECT_EQ(encode(99, kFromUi), "") << "unknown in this direction";
  for (std::size_t size = 0; size < payload.size(); ++size) {
    EXPECT_EQ(encode(size, kToUi), std::to_string(kEncodeFailed)) << size;
  }
}

TEST(DecodeMessage, fillsTheWordsWithBlanksForNulsAndLeavesTheOthersAlone) {
  const std::string text("a\0b\0", 4);
  const std::string payload = wireString("") + wireString(text) + wireWord(-3) + wireWord(2) +
                              wireString(text) + wireString("");
  ToolMessage message{9, 9, 9, 9, 9};
  EXPECT_EQ(decode(MSG_T_ASK_LIST, payload, message), kDecodeOk);
  EXPECT_EQ(message.text(0) + std::string(message.text(1)) + shown(message.list(3)),
            "a b a b /4 /0 ");
  EXPECT_EQ(std::pair(message.number(2), message.w4), std::pair(-3, std::intptr_t{9}));
  for (int times = 0; times < 2; ++times) {  // the second one has nothing left to do
    FreeMessage(MSG_T_ASK_LIST, &message);
    EXPECT_EQ(message.w0 | message.w1 | message.w3, 0);
  }
  message.w3 = 1;
  EXPECT_EQ(decode(MSG_T_ASK_LIST, std::string(16, '\0'), message), kDecodeOk);
  EXPECT_EQ(message.list(3), nullptr) << "an empty list";
  FreeMessage(MSG_T_ASK_LIST, &message);
}

TEST(DecodeMessage, reportsPositionAndLengthWhenTheyDiffer) {
  const std::string two = wireWord(0) + wireWord(0);
  const std::tuple<int, std::string, long> rows[] = {
      {MSG_T_EXIT_CONFIRM, "abcd", 0},
      {4711, "a", 0},
      {MSG_T_TEXT, wireString("text") + "!", 8},
      {MSG_T_TEXT, "", 4},
      {MSG_T_TEXT, "abc", 4},
      {MSG_T_TEXT, wireWord(100) + "abc", 104},
      {MSG_T_TEXT, wireWord(kHuge) + "abc", 2147483651},
      {MSG_T_TEXT, wireWord(-4) + "abc", 0},
      {MSG_T_QUESTION, wireString("ab") + wireWord(-1), 9},
      {MSG_T_QUESTION, wireString("ab") + wireString("cde").substr(0, 6), 13},
      {MSG_T_ASK_RANGE, two + wireWord(1) + "ab", 16},
      {MSG_T_ASK_BITS, two + wireWord(9) + wireString("a"), 21},
      {MSG_T_ASK_BITS, two + wireWord(-1), 11},
      {MSG_T_ASK_BITS, two + wireWord(1) + wireWord(50), 66},
  };
  for (const auto& [tag, payload, position] : rows) {
    ToolMessage message{1, 1, 1, 1, 1};
    CaptureStderr();
    EXPECT_EQ(decode(tag, payload, message), kDecodeLengthWrong);
    EXPECT_EQ(GetCapturedStderr(),
              "**ERR:Message Decoder : Expected BufferLength=" + std::to_string(position) +
                  ", Got Length=" + std::to_string(payload.size()) + "\n");
    // Nothing is left to release.
    EXPECT_TRUE(tag != MSG_T_QUESTION || (message.text(0) == nullptr && message.w1 == 0));
  }
}

TEST(DecodeMessage, neverReadsMoreThanAPayloadBufferWhateverTheLength) {
  const std::vector<char> buffer(kPayloadBufferBytes);
  const auto refused = [](int tag, const char* payload, int length) {
    ToolMessage message;
    CaptureStderr();
    EXPECT_EQ(DecodeMessage(tag, payload, length, &message), kDecodeLengthWrong);
    EXPECT_THAT(GetCapturedStderr(), testing::EndsWith("=" + std::to_string(length) + "\n"));
  };
  for (const int length : {-1, -kHuge, kHuge, kPayloadBufferBytes + 1}) {
    refused(MSG_T_EXIT, buffer.data(), length);
    refused(MSG_T_TEXT, buffer.data(), length);
  }
  refused(MSG_T_TEXT, nullptr, 8);
}

TEST(RendezvousPrefix, liesInTmpUnlessAFolderIsNamed) {
  EXPECT_EQ(rendezvousPrefix(nullptr), "/tmp/.nel.tessil.");
  EXPECT_EQ(rendezvousPrefix(""), "/tmp/.nel.tessil.");
  EXPECT_EQ(rendezvousPrefix("/var/tmp"), "/var/tmp/.nel.tessil.");
}

}  // namespace
