// The first byte picks a row of the table, the rest is the payload. What decodes encodes to the
// same bytes again, but for a blank in place of each NUL in a text.

#include <algorithm>
#include <vector>

#include "link/message_codec.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  if (data.empty()) {
    return;
  }
  const auto rows = messageTable();
  const MessageRow row = rows[data[0] % rows.size()];
  const std::vector<char> payload(data.begin() + 1, data.end());
  const int length = static_cast<int>(payload.size());
  ToolMessage message;
  if (DecodeMessage(row.tag, payload.data(), length, &message, row.direction) == kDecodeOk) {
    std::vector<char> again(payload.size());
    require(EncodeMessage(row.tag, message, again, row.direction) == length);
    require(std::equal(again.begin(), again.end(), payload.begin(), [](char now, char before) {
      return now == before || (now == ' ' && before == '\0');
    }));
  }
  FreeMessage(row.tag, &message, row.direction);
}
