// The first byte picks a row of the table (or none), the rest is the payload. What decodes encodes
// to the same bytes again, but for a blank in place of each NUL in a text.

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
  return 0;
}
