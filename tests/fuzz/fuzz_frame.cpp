// The frame buffer against a plain string: pieces of the input go in, frames come out at times
// that the input chooses, and each splits without a read or write out of bounds.

#include <algorithm>
#include <string>
#include <vector>

#include "link/wire.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  constexpr std::size_t kStretch = 37;  // makes pieces that outgrow the first capacity
  FrameBuffer buffer;
  std::string model;
  while (!data.empty()) {
    const std::size_t control = data[0];
    const auto bytes = data.subspan(1, std::min(control / 2, data.size() - 1));
    data = data.subspan(1 + bytes.size());
    std::string piece(bytes.begin(), bytes.end());
    piece.append(control * kStretch % 5000, 'x');
    buffer.FrameBufferAppend(piece.data(), static_cast<int>(piece.size()));
    model += piece;
    for (std::size_t i = 0; i < control % 4; ++i) {
      const std::size_t length = model.find('\0') + 1;  // 0 for no whole frame
      const char* const frame = buffer.FrameBufferPeek();
      require((frame != nullptr) == (length != 0) && buffer.frameLength() == length);
      require(model.compare(0, length, frame, length) == 0);
      const std::vector<char> text(frame, frame + length);
      std::vector<char> payload(length / 4);
      decodeFrame(text.data(), static_cast<int>(length), payload);
      model.erase(0, length);
      buffer.FrameBufferDrop();
      require(buffer.bytesStored() == model.size());
    }
  }
}
