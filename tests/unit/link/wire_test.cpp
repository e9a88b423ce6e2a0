// The wire's characters, frames in them, the receive buffer of frames, and the messages in frames.

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <limits>

#include "link/message_codec.h"
#include "link/message_numbers.h"
#include "link/port_control.h"
#include "link/tool_interface.h"
#include "tests/support/message.h"

namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

constexpr int kHugeLength = std::numeric_limits<int>::max();

std::string decoded(const std::string& text) {
  std::string bytes(text.size() / 2 + 1, '!');
  EXPECT_EQ(NibbleDecode(text.data(), bytes.data(), static_cast<int>(text.size())),
            static_cast<int>(text.size() / 2));
  return bytes;
}

TEST(Nibble, writesHighNibbleFirstAndReadsAnyCharactersByEightBitArithmetic) {
  std::string text(19, '!');
  EXPECT_EQ(NibbleEncode("\x01\x23\x45\x67\x89\xab\xcd\xef", text.data(), 8), 16);
  EXPECT_EQ(text, std::string("0123456789:;<=>?\0!!", 19));
  EXPECT_EQ(decoded("41429"), "AB!") << "an odd last character counts for nothing";
  text.clear();
  std::string bytes;
  for (int high = 0; high < 256; ++high) {
    for (int low = 0; low < 256; ++low) {
      text += {static_cast<char>(high), static_cast<char>(low)};
      bytes += static_cast<char>((high - '0') * 16 + (low - '0'));
    }
  }
  // In pieces of every length, since the loop works on many characters at once.
  std::size_t from = 0;
  for (std::size_t length = 0; from < bytes.size(); from += length++) {
    EXPECT_EQ(decoded(text.substr(2 * from, 2 * length)), bytes.substr(from, length) + "!");
  }
}

TEST(Frame, isBuiltUpToItsLargestSizeOnly) {
  const std::string payload(kMaxPayloadBytes + 1, 'p');
  const auto built = [&](int length, const void* data, std::size_t room = kMaxSentFrameText) {
    std::string text(room, '!');
    const int used = encodeFrame({kFrameUndirected, 9001, NELKVUI, 0, length}, data, text);
    return used < 0 ? "none" : text.substr(0, static_cast<std::size_t>(used));
  };
  const std::string bare("0100000029230000020000000000000000000000\0", 41);
  EXPECT_EQ(built(0, nullptr, 41), bare);
  EXPECT_EQ(built(0, nullptr, 40), "none");
  EXPECT_EQ(built(3, "A\xFFz"), bare.substr(0, 32) + "0300000041??7:" + '\0');
  EXPECT_EQ(built(kMaxPayloadBytes, payload.data()).size(), std::size_t{kMaxSentFrameText});
  for (const int length : {kMaxPayloadBytes + 1, -1, kHugeLength, -kHugeLength}) {
    EXPECT_EQ(built(length, payload.data()), "none") << length;
  }
}

/// What ToolFrameDecode makes of a text: tag, sender, dest, announced length, payload up to what
/// was left alone, and what it said.
std::string split(std::string text) {
  text.shrink_to_fit();
  std::array<int, 4> words{-9, -9, -9, -9};
  std::string data(kPayloadBufferBytes + 1, '!');
  CaptureStderr();
  EXPECT_EQ(ToolFrameDecode(text.data(), static_cast<int>(text.size()), &words[0], &words[1],
                            data.data(), &words[3], &words[2]),
            1);
  EXPECT_EQ(data.back(), '!');
  std::string all;
  for (const int word : words) {
    all += std::to_string(word) + " ";
  }
  return all + data.substr(0, data.find_last_not_of('!') + 1) + GetCapturedStderr();
}

TEST(ToolFrameDecode, storesOnlyWhatCameOfTheAnnouncedLength) {
  const auto announcing = [](int length) {
    return wireText({kFrameDirected, 2000, NELKV, NELKVUI, length}, "abcd");
  };
  EXPECT_EQ(split(announcing(4) + "4142"), "2000 1 2 4 abcd") << "the NUL ends the frame";
  EXPECT_EQ(split(announcing(4).substr(0, 44)), "2000 1 2 4 ab");
  EXPECT_EQ(split(announcing(2)), "2000 1 2 2 ab");
  EXPECT_EQ(split(announcing(100)), "2000 1 2 100 abcd");
  EXPECT_EQ(split(announcing(kHugeLength)), "2000 1 2 2147483647 abcd");
  EXPECT_EQ(split(announcing(-7)), "2000 1 2 -7 ");
  const std::string tooLong(50000, 'p');
  EXPECT_EQ(split(wireText({0, 2000, 1, 2, 50000}, tooLong)),
            "2000 1 2 50000 " + tooLong.substr(0, kPayloadBufferBytes));
}

TEST(ToolFrameDecode, readsTheWordsOfAShortFrameAndComplainsBelowSixteenBytes) {
  const std::string whole = wireText({0, 2000, NELKV, NELKVUI, 0}, "");
  for (const auto& [bytes, words] :
       {std::pair(0, "0 0 0 0 "), {5, "208 0 0 0 "}, {15, "2000 1 2 0 "}, {16, "2000 1 2 0 "}}) {
    const std::string complaint =
        FormatToolName(g_OwnToolType) +
        (":**ERR:Message received with illegal length information (len=" + std::to_string(bytes)) +
        "). NOT !!! Ignored.\n";
    EXPECT_EQ(split(whole.substr(0, 2 * static_cast<std::size_t>(bytes))),
              words + (bytes < 16 ? complaint : ""));
  }
}

void append(FrameBuffer& buffer, const std::string& bytes) {
  buffer.FrameBufferAppend(bytes.data(), static_cast<int>(bytes.size()));
}

/// All whole frames, each with a "." behind it.
std::string take(FrameBuffer& buffer) {
  std::string all;
  while (const char* const frame = buffer.FrameBufferPeek()) {
    EXPECT_EQ(buffer.frameLength(), std::strlen(frame) + 1);
    all += std::string(frame) + ".";
    buffer.FrameBufferDrop();
  }
  EXPECT_EQ(buffer.frameLength(), 0U);
  const std::size_t rest = buffer.bytesStored();
  buffer.FrameBufferDrop();
  EXPECT_EQ(buffer.bytesStored(), rest) << "a part of a frame stays";
  return all;
}

TEST(FrameBuffer, givesOutFramesHoweverTheyWereCut) {
  const std::string stream("first\0\0third\0", 13);
  for (std::size_t cut = 0; cut <= stream.size(); ++cut) {
    FrameBuffer buffer;
    append(buffer, stream.substr(0, cut));
    buffer.FrameBufferAppend("abc", -1);
    const std::string before = take(buffer);
    append(buffer, stream.substr(cut));
    EXPECT_EQ(before + take(buffer), "first..third.") << cut;
    EXPECT_EQ(buffer.bytesStored(), 0U);
  }
}

TEST(FrameBuffer, growsByExactlyWhatIsNeededAndUsesTheRoomOfDroppedFramesAgain) {
  FrameBuffer buffer;
  append(buffer, std::string(4096, 'a'));
  EXPECT_EQ(buffer.bytesReserved(), 4096U);
  append(buffer, std::string("bc\0rest", 7));
  EXPECT_EQ(buffer.bytesReserved(), 4103U);
  EXPECT_EQ(take(buffer), std::string(4096, 'a') + "bc.");
  append(buffer, std::string(4098, 'd'));
  append(buffer, std::string(1, '\0'));
  EXPECT_EQ(take(buffer), "rest" + std::string(4098, 'd') + ".");
  EXPECT_EQ(buffer.bytesReserved(), 4103U);
}

constexpr auto kToUi = MessageDirection::kReceivedByUi;
constexpr auto kFromUi = MessageDirection::kSentByUi;

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
      {MSG_T_TEXT, wireWord(kHugeLength) + "abc", 2147483651},
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
  for (const int length : {-1, -kHugeLength, kHugeLength, kPayloadBufferBytes + 1}) {
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
