// Any text splits into a frame without a read or write out of bounds; raw bytes are tried as wire
// text and, encoded first, as a binary form.

#include <vector>

#include "link/tool_interface.h"
#include "link/wire.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

void splitText(const std::vector<char>& text) {
  std::vector<char> payload(kPayloadBufferBytes);
  int tag = 0;
  int sender = 0;
  int length = 0;
  int dest = 0;
  require(ToolFrameDecode(text.data(), static_cast<int>(text.size()), &tag, &sender, payload.data(),
                          &length, &dest) == 1);
}

}  // namespace

void fuzz(std::span<const std::uint8_t> data) {
  const std::vector<char> bytes(data.begin(), data.end());
  splitText(bytes);
  std::vector<char> text(2 * bytes.size() + 1);
  NibbleEncode(bytes.data(), text.data(), static_cast<int>(bytes.size()));
  splitText(text);
}
