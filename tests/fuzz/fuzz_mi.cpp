// Any bytes as GDB's machine interface, cut where their first byte says: the records are those of
// the whole.

#include "tests/fuzz/fuzz_target.h"
#include "tests/support/mi_pictures.h"

void fuzz(std::span<const std::uint8_t> data) {
  const std::string_view bytes(reinterpret_cast<const char*>(data.data()), data.size());
  const std::size_t step = data.empty() ? 1 : 1 + data[0];
  require(gdb::mi::pictures(bytes, bytes.size() + 1) == gdb::mi::pictures(bytes, step));
}
