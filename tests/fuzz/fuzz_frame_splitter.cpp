// The Postmaster's stream of any bytes, in pieces: what is parsed of it is as long as it says.

#include <string>

#include "postmaster/message.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  constexpr std::size_t kStretch = 997;  // makes frames that are too long
  postmaster::FrameSplitter splitter;
  while (!data.empty()) {
    const auto piece = data.subspan(0, std::min<std::size_t>(1 + data[0], data.size()));
    data = data.subspan(piece.size());
    splitter.append(std::string(piece.begin(), piece.end()) +
                    std::string(piece[0] * kStretch, '0'));
    using Item = postmaster::FrameSplitter::Item;
    std::string text;
    for (Item item = splitter.next(text); item != Item::kNone; item = splitter.next(text)) {
      if (item == Item::kFrame) {
        const auto [message, fault] = postmaster::parseText(text);
        require((message == nullptr) != fault.empty());
        require(message == nullptr ||
                message->payload.size() == static_cast<std::size_t>(message->header.length));
      }
    }
  }
}
