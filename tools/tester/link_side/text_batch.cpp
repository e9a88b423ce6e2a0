#include "tester/link_side/text_batch.h"

#include <utility>

namespace tester {

namespace {

/// Whether the byte continues a UTF-8 character.
bool isContinuation(char byte) {
  constexpr unsigned char kMask = 0xC0;
  constexpr unsigned char kContinuation = 0x80;
  return (static_cast<unsigned char>(byte) & kMask) == kContinuation;
}

/// More bytes than a UTF-8 character has; text with longer runs of continuations is none.
constexpr std::size_t kLongestCharacter = 4;

}  // namespace

std::size_t TextBatch::cutPosition() const {
  const std::size_t lineEnd = pending.rfind('\n', kMaxPiece - 1);
  if (lineEnd != std::string::npos) {
    return lineEnd + 1;
  }
  std::size_t position = kMaxPiece;
  while (position > kMaxPiece - kLongestCharacter && isContinuation(pending[position])) {
    --position;
  }
  return position;
}

std::optional<std::string> TextBatch::takeFull() {
  if (pending.size() <= kMaxPiece) {
    return std::nullopt;
  }
  const std::size_t position = cutPosition();
  std::string piece = pending.substr(0, position);
  pending.erase(0, position);
  return piece;
}

std::string TextBatch::takeRest() {
  return std::exchange(pending, {});
}

}  // namespace tester
