#include "postmaster/frame_splitter.h"

#include "link/wire.h"

namespace postmaster {

void FrameSplitter::append(std::string_view bytes) {
  buffer.erase(0, taken);
  taken = 0;
  buffer += bytes;
}

FrameSplitter::Item FrameSplitter::next(std::string& text) {
  while (true) {
    const std::size_t nul = buffer.find('\0', taken);
    const bool whole = nul != std::string::npos;
    const std::size_t end = whole ? nul : buffer.size();
    if (!discarding && end - taken >= kMaxFrameText) {
      discarding = true;
      return Item::kOversized;
    }
    if (!whole && !discarding) {
      return Item::kNone;
    }
    const std::size_t start = taken;
    taken = whole ? end + 1 : end;
    if (!discarding) {
      text.assign(buffer, start, end - start);
      return Item::kFrame;
    }
    if (!whole) {
      return Item::kNone;
    }
    discarding = false;
  }
}

}  // namespace postmaster
