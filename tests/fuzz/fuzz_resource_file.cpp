// Any bytes serve as a resource file, and as the data of each type of record. The first byte
// chooses whether a good header is put in front.

#include <memory>
#include <span>
#include <sstream>
#include <string>

#include "resources/resource_file.h"
#include "tests/fuzz/fuzz_target.h"

namespace {

// An index right behind the header block.
std::string goodHeader() {
  std::string header("zSig448822");
  header.resize(100);
  header[12] = 1;
  header[99] = 95;
  return header;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const bool hasHeader = size > 0 && data[0] % 2 != 0;
  const std::string input((hasHeader ? goodHeader() : "") + std::string(data, data + size));
  ResourceFile file(std::make_unique<std::istringstream>(input));
  for (std::uint32_t type = 0; type < 12; ++type) {
    const auto found = file.find(type, type);
    require(!found || (file.isValid() && found->size() <= input.size()));
  }

  const std::span bytes(data, size);
  const auto text = readStringResource(bytes);
  require(!text || text->size() <= size);
  const auto accelerators = readAcceleratorResource(bytes);
  require(accelerators->rows.back().kind == kAccelEnd);
  const auto dialog = readDialogResource(bytes);
  require(dialog == nullptr || dialog->dialog.itemCount == dialog->items.size());
  return 0;
}
