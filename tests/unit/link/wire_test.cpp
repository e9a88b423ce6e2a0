// The wire's characters, frames in them, and the receive buffer of frames.

#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <limits>

#include "link/message_numbers.h"
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

}  // namespace
