// Any bytes are checked as a button file: as many lines come out as are counted, and a bounded
// amount.

#include <algorithm>
#include <sstream>

#include "btnlint/lint.h"
#include "support/descriptor.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  if (data.empty()) {
    return;  // of which there is no file in memory
  }
  const UniqueFile file(::fmemopen(const_cast<std::uint8_t*>(data.data()), data.size(), "rb"));
  std::ostringstream output;
  const std::size_t count = btnlint::lint("set", file.get(), output);
  const std::string text = output.str();
  require(static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) == count);
  require(count <= btnlint::kMaxLineRemarks + 10);
}
