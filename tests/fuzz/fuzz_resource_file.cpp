// Any bytes serve as a resource file, and as the data of each type of record. The first byte
// chooses whether a good header is put in front.

#include <memory>
#include <sstream>
#include <string>

#include "resources/extra/resource_file.h"
#include "tests/fuzz/fuzz_target.h"

void fuzz(std::span<const std::uint8_t> data) {
  // A good one is a signature, a version and an index right behind the header.
  std::string input("zSig448822\0\0\1", 13);
  input.resize(99);
  input += 95;
  const bool isWithHeader = !data.empty() && data[0] % 2 != 0;
  input.erase(isWithHeader ? input.size() : 0).append(data.begin(), data.end());
  ResourceFile file(std::make_unique<std::istringstream>(input));
  for (std::uint32_t type = 0; type < 12; ++type) {
    const auto found = file.find(type, type);
    require(!found || (file.isValid() && found->size() <= input.size()));
  }

  const auto text = readStringResource(data);
  require(!text || text->size() <= data.size());
  const auto accelerators = readAcceleratorResource(data);
  require(accelerators->rows.back().kind == kAccelEnd);
  const auto dialog = readDialogResource(data);
  require(dialog == nullptr || dialog->dialog.itemCount == dialog->items.size());
}
