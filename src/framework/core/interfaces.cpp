#include "framework/core/interfaces.h"

#include <algorithm>
#include <vector>

ziDropDown* openCombo = nullptr;

void closeOpenDropDown() {
  if (openCombo != nullptr) {
    openCombo->hideDropDown();
  }
}

namespace {

// Behind the numbers of the built-in classes.
constexpr std::uint32_t kFirstRegisteredClass = 0x100;

struct RegisteredClass {
  std::string name;
  zRecordControlMaker maker;
};

std::vector<RegisteredClass>& registry() {
  static std::vector<RegisteredClass> classes;
  return classes;
}

zRecordControlMaker recordMaker = nullptr;

}  // namespace

std::uint32_t registerControlClass(const std::string& name, zRecordControlMaker maker) {
  std::vector<RegisteredClass>& classes = registry();
  auto found = std::find_if(classes.begin(), classes.end(),
                            [&](const RegisteredClass& known) { return known.name == name; });
  if (found == classes.end()) {
    found = classes.insert(found, {name, nullptr});
  }
  found->maker = maker;
  return kFirstRegisteredClass + static_cast<std::uint32_t>(found - classes.begin());
}

zRecordControlMaker registeredControlMaker(std::uint32_t controlClass) {
  const std::uint32_t index = controlClass - kFirstRegisteredClass;
  return index < registry().size() ? registry()[index].maker : nullptr;
}

void setRecordControlMaker(zRecordControlMaker maker) {
  recordMaker = maker;
}

zRecordControlMaker recordControlMaker() {
  return recordMaker;
}
