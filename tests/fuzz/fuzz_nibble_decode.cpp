// Any characters decode without harm, and the bytes come back from the wire unchanged.

#include <vector>

#include "link/wire.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  const std::vector<char> text(data.begin(), data.end());
  std::vector<char> bytes(text.size() / 2);
  const int count = NibbleDecode(text.data(), bytes.data(), static_cast<int>(text.size()));
  require(count == static_cast<int>(bytes.size()));

  std::vector<char> wire(2 * bytes.size() + 1);
  require(NibbleEncode(bytes.data(), wire.data(), count) == 2 * count);
  std::vector<char> again(bytes.size());
  require(NibbleDecode(wire.data(), again.data(), 2 * count) == count);
  require(again == bytes);
}
