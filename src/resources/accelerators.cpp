#include "resources/accelerators.h"

#include "resources/command_ids.h"
#include "resources/resource_ids.h"

namespace {

constexpr int kUnused = 1;  // set in all rows with modifiers or virtual keys, and never tested
constexpr int kControl = kAccelControl | kUnused;

constexpr AcceleratorRow kMainAccelerators[] = {
    {0, kCommandOpen, "o", kAccelCharacter, kControl},
    {0, kCommandExit, "q", kAccelCharacter, kControl},
    {0, kCommandHelpUi, "h", kAccelCharacter, kControl},
    {0, kCommandToggleToolBar, "t", kAccelCharacter, kControl},
    {0, kCommandToggleStatusLine, "f", kAccelCharacter, kControl},
    {0, kCommandOrganizer, "1", kAccelCharacter, kControl},
    {0, kCommandCopy, "c", kAccelCharacter, kControl},
    {0, kCommandPaste, "v", kAccelCharacter, kControl},
    {0, kCommandHelpTessil, "VK_F1", kAccelVirtualKey, kUnused},
    {0, kCommandFindNext, "VK_F3", kAccelVirtualKey, kUnused},
    {0, 0, nullptr, kAccelEnd, 0},
};

}  // namespace

const AcceleratorRow* acceleratorResource(int id) {
  return id == kAcceleratorsMain ? kMainAccelerators : nullptr;
}
