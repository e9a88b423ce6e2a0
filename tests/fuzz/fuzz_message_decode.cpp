// The first byte picks a row of the table (or none), the rest is the payload. What decodes encodes
// to the same bytes again, but for a blank in place of each NUL in a text.

#include <algorithm>
#include <vector>

#include "link/message_codec.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  if (data.empty()) {
    return;
  }
  const auto rows = messageTable();
  const MessageRow row = data[0] < rows.size()
                             ? rows[data[0]]
                             : MessageRow{-1, MessageDirection::kReceivedByUi, "", ""};
  const std::vector<char> payload(data.begin() + 1, data.end());
  const int length = static_cast<int>(payload.size());
  ToolMessage message;
  const int result = DecodeMessage(row.tag, payload.data(), length, &message, row.direction);
  require(result == kDecodeOk || result == kDecodeLengthWrong);
  if (result == kDecodeOk) {
    std::vector<char> again(payload.size());
    const int written = EncodeMessage(row.tag, message, again, row.direction);
    require(written == length);
    require(std::equal(again.begin(), again.end(), payload.begin(), [](char now, char before) {
      return now == before || (now == ' ' && before == '\0');
    }));
  }
  FreeMessage(row.tag, &message, row.direction);
}
