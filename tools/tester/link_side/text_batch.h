#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace tester {

/// Collects text for the log and hands it out in pieces that fit one message: as many whole lines
/// as go in; only a line that is longer by itself is cut, never within a UTF-8 character.
class TextBatch {
 public:
  /// Bytes of one piece: nearly what a frame holds, since the user interface takes frame by frame.
  static constexpr std::size_t kMaxPiece = 16000;

  void append(const std::string& text) { pending += text; }
  bool isEmpty() const { return pending.empty(); }

  /// A piece that is full, while there is more text than one holds.
  std::optional<std::string> takeFull();

  /// All text that is left after the full pieces.
  std::string takeRest();

 private:
  std::size_t cutPosition() const;

  std::string pending;
};

}  // namespace tester
