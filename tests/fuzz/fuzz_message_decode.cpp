// The first byte picks a row of the table (or none), the rest is the payload. What decodes encodes
// to the same bytes again, as long as no text holds a NUL.

#include <algorithm>
#include <cstring>
#include <vector>

#include "link/message_codec.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

constexpr MessageRow kNoRow{-1, MessageDirection::kReceivedByUi, "", ""};

const MessageRow& pickRow(std::uint8_t number) {
  const auto rows = messageTable();
  return number < rows.size() ? rows[number] : kNoRow;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const MessageRow& row = pickRow(data[0]);
  const std::vector<char> payload(data + 1, data + size);
  const int length = static_cast<int>(payload.size());
  ToolMessage message;
  const int result = decodeMessage(row.direction, row.tag, payload.data(), length, &message);
  require(result == kDecodeOk || result == kDecodeLengthWrong);
  if (result == kDecodeOk) {
    std::vector<char> again(payload.size());
    const int written = encodeMessage(row.direction, row.tag, message, again);
    require(written >= 0 && written <= length);
    // Shorter only by what follows a NUL within a text.
    require(written < length || again == payload);
  }
  freeMessage(row.direction, row.tag, &message);
  return 0;
}
