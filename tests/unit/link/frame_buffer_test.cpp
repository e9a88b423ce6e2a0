#include "link/frame_buffer.h"

#include <gmock/gmock.h>
#include <chrono>
#include <string>

namespace {

void append(FrameBuffer& buffer, const std::string& bytes) {
  buffer.FrameBufferAppend(bytes.data(), static_cast<int>(bytes.size()));
}

std::string take(FrameBuffer& buffer) {
  const char* const frame = buffer.FrameBufferPeek();
  if (frame == nullptr) {
    EXPECT_EQ(buffer.frameLength(), 0U);
    return "(none)";
  }
  std::string text = frame;
  EXPECT_EQ(buffer.frameLength(), text.size() + 1);
  buffer.FrameBufferDrop();
  return text;
}

const std::string kThreeFrames("first\0\0third\0", 13);

TEST(FrameBuffer, givesOutFramesHoweverTheyWereCut) {
  for (std::size_t cut = 0; cut <= kThreeFrames.size(); ++cut) {
    FrameBuffer buffer;
    append(buffer, kThreeFrames.substr(0, cut));
    std::vector<std::string> frames;
    for (std::string frame = take(buffer); frame != "(none)"; frame = take(buffer)) {
      frames.push_back(frame);
    }
    append(buffer, kThreeFrames.substr(cut));
    for (std::string frame = take(buffer); frame != "(none)"; frame = take(buffer)) {
      frames.push_back(frame);
    }
    EXPECT_THAT(frames, testing::ElementsAre("first", "", "third")) << cut;
    EXPECT_EQ(buffer.bytesStored(), 0U);
  }
}

TEST(FrameBuffer, keepsAPartialFrameWhenAskedToDropIt) {
  FrameBuffer buffer;
  append(buffer, "part");
  buffer.FrameBufferDrop();
  EXPECT_EQ(buffer.bytesStored(), 4U);
  append(buffer, std::string("ial\0", 4));
  EXPECT_EQ(take(buffer), "partial");
}

TEST(FrameBuffer, growsByExactlyWhatIsNeededAndNeverShrinks) {
  FrameBuffer buffer;
  EXPECT_EQ(buffer.bytesReserved(), 4096U);
  append(buffer, std::string(4096, 'a'));
  EXPECT_EQ(buffer.bytesReserved(), 4096U);
  append(buffer, std::string("bc\0rest", 7));
  EXPECT_EQ(buffer.bytesReserved(), 4103U);
  EXPECT_EQ(take(buffer), std::string(4096, 'a') + "bc");
  append(buffer, std::string(4098, 'd'));
  EXPECT_EQ(buffer.bytesReserved(), 4103U) << "room of dropped frames is used again";
  append(buffer, std::string(1, '\0'));
  EXPECT_EQ(take(buffer), "rest" + std::string(4098, 'd'));
  EXPECT_EQ(buffer.bytesReserved(), 4103U);
  EXPECT_EQ(take(buffer), "(none)");
}

TEST(FrameBuffer, storesNothingForAnEmptyOrNegativeCount) {
  FrameBuffer buffer;
  buffer.FrameBufferAppend("abc", 0);
  buffer.FrameBufferAppend("abc", -1);
  EXPECT_EQ(buffer.bytesStored(), 0U);
}

// Moving the rest at every drop, or scanning it anew at every peek, would take minutes here.
TEST(FrameBuffer, takesALargeBacklogInTimeLinearToItsBytes) {
  constexpr int kFrames = 400000;
  std::string backlog;
  for (int i = 0; i < kFrames; ++i) {
    backlog += std::string("12345678901\0", 12);
  }
  const auto start = std::chrono::steady_clock::now();
  FrameBuffer buffer;
  append(buffer, backlog);
  for (int i = 0; i < kFrames; ++i) {
    ASSERT_EQ(buffer.frameLength(), 12U);
    buffer.FrameBufferDrop();
  }
  append(buffer, std::string(3000000, 'x'));
  for (int i = 0; i < kFrames; ++i) {
    ASSERT_EQ(buffer.FrameBufferPeek(), nullptr);
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

}  // namespace
