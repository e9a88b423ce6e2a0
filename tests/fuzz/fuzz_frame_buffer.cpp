// The frame buffer against a plain string: pieces of the input go in, frames come out at times
// that the input chooses.

#include <algorithm>
#include <string>

#include "link/wire.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

void takeFrame(FrameBuffer& buffer, std::string& model) {
  const std::size_t end = model.find('\0');
  const char* const frame = buffer.FrameBufferPeek();
  require((frame != nullptr) == (end != std::string::npos));
  require(buffer.frameLength() == (frame != nullptr ? end + 1 : 0));
  if (frame != nullptr) {
    require(model.compare(0, end, frame) == 0);
    model.erase(0, end + 1);
  }
  buffer.FrameBufferDrop();
  require(buffer.bytesStored() == model.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t kStretch = 37;  // makes pieces that outgrow the first capacity
  FrameBuffer buffer;
  std::string model;
  for (std::size_t at = 0; at < size;) {
    const std::size_t control = data[at++];
    const std::size_t count = std::min<std::size_t>(control / 2, size - at);
    std::string piece(data + at, data + at + count);
    at += count;
    piece.append(control * kStretch % 5000, 'x');
    buffer.FrameBufferAppend(piece.data(), static_cast<int>(piece.size()));
    model += piece;
    for (std::size_t i = 0; i < control % 4; ++i) {
      takeFrame(buffer, model);
    }
  }
  return 0;
}
