// Any characters decode without harm, and the bytes come back from the wire unchanged.

#include <vector>

#include "link/wire.h"
#include "tests/fuzz/fuzz_target.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<char> text(data, data + size);
  std::vector<char> bytes(size / 2);
  const int count = NibbleDecode(text.data(), bytes.data(), static_cast<int>(size));
  require(count == static_cast<int>(size / 2));

  std::vector<char> wire(2 * bytes.size() + 1);
  require(NibbleEncode(bytes.data(), wire.data(), count) == 2 * count);
  std::vector<char> again(bytes.size());
  require(NibbleDecode(wire.data(), again.data(), 2 * count) == count);
  require(again == bytes);
  return 0;
}
