#include "framework/core/accelerator.h"

#include <charconv>
#include <string_view>

namespace {

constexpr unsigned kKeysymBeforeF1 = 65469;
constexpr unsigned kKeysymDelete = 65535;
constexpr unsigned kKeysymInsert = 65379;
constexpr unsigned kKeysymUp = 65362;

struct NamedKey {
  std::string_view name;
  unsigned keysym;
};
constexpr NamedKey kNamedKeys[] = {
    {"VK_DELETE", kKeysymDelete}, {"VK_INSERT", kKeysymInsert}, {"VK_UP", kKeysymUp}};

struct Modifier {
  int flag;
  unsigned stateMask;
};
constexpr Modifier kModifiers[] = {
    {kAccelControl, kStateControl}, {kAccelAlt, kStateMod1}, {kAccelShift, kStateShift}};

std::optional<unsigned> functionKeysym(std::string_view name) {
  constexpr std::string_view prefix = "VK_F";
  if (!name.starts_with(prefix)) {
    return std::nullopt;
  }
  const std::string_view digits = name.substr(prefix.size());
  unsigned number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size()) {
    return std::nullopt;
  }
  return kKeysymBeforeF1 + number;
}

std::optional<unsigned> keyCodeOf(const AcceleratorRow& row, const std::string& name) {
  switch (row.kind) {
    case kAccelCharacter:
      return name.empty() ? std::nullopt
                          : std::optional<unsigned>(static_cast<unsigned char>(name.front()));
    case kAccelKeysym:
      return static_cast<unsigned>(row.key);
    case kAccelVirtualKey:
      return virtualKeysym(name);
    default:
      return std::nullopt;
  }
}

bool hasModifiers(const zAccel& accelerator, unsigned modifiers) {
  for (const Modifier& modifier : kModifiers) {
    if ((accelerator.flags & modifier.flag) != 0 && (modifiers & modifier.stateMask) == 0) {
      return false;
    }
  }
  return true;
}

}  // namespace

std::optional<unsigned> virtualKeysym(const std::string& name) {
  for (const NamedKey& key : kNamedKeys) {
    if (name == key.name) {
      return key.keysym;
    }
  }
  return functionKeysym(name);
}

std::vector<zAccel> makeAccelerators(const AcceleratorRow* rows) {
  std::vector<zAccel> table;
  for (const AcceleratorRow* row = rows; row->kind != kAccelEnd; ++row) {
    const std::string name = row->name == nullptr ? "" : row->name;
    table.push_back({row->key, row->command, name, row->kind, keyCodeOf(*row, name), row->flags});
  }
  return table;
}

const zAccel* findAccelerator(const std::vector<zAccel>& table, unsigned character, unsigned keysym,
                              unsigned modifiers) {
  for (const zAccel& accelerator : table) {
    const bool isKey = accelerator.keyCode == character || accelerator.keyCode == keysym;
    if (isKey && hasModifiers(accelerator, modifiers)) {
      return &accelerator;
    }
  }
  return nullptr;
}
