#pragma once

#include <optional>
#include <string>
#include <vector>

#include "framework/core/event.h"
#include "resources/builtin_table.h"

/// One entry of the accelerator table, ready to be compared with key events.
struct zAccel {
  int key = 0;
  int command = 0;
  std::string name;
  int kind = kAccelCharacter;
  std::optional<unsigned> keyCode;  ///< character or keysym; none for an unknown virtual key
  int flags = 0;
};

/// Modifier bits of an X event's state, as accelerators ask for them.
enum KeyStateMask : unsigned {
  kStateShift = 1,
  kStateLock = 2,
  kStateControl = 4,
  kStateMod1 = 8,
};

/// The keysym of a virtual key name ("VK_F3", "VK_DELETE", "VK_INSERT", "VK_UP").
std::optional<unsigned> virtualKeysym(const std::string& name);

/// The rows up to the one that ends the table.
std::vector<zAccel> makeAccelerators(const AcceleratorRow* rows);

/// The first entry whose key is this event's character or keysym and whose modifiers are all down
/// in `modifiers` (X state bits); others may be down as well. Null when there is none.
const zAccel* findAccelerator(const std::vector<zAccel>& table, unsigned character, unsigned keysym,
                              unsigned modifiers);
