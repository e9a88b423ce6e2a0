#include "resources/builtin_table.h"

#include <algorithm>
#include <limits>

#include "resources/dialogs.h"
#include "resources/resource_ids.h"

// The pictures are the files of resources/images; the build makes the lists of their bytes.

namespace {

constexpr std::uint8_t kOpen[] = {
#include "images/open.bmp.inc"
};
constexpr std::uint8_t kHelp[] = {
#include "images/help.bmp.inc"
};
constexpr std::uint8_t kOrganizer[] = {
#include "images/organizer.bmp.inc"
};
constexpr std::uint8_t kZoomIn[] = {
#include "images/zoom_in.bmp.inc"
};
constexpr std::uint8_t kZoomOut[] = {
#include "images/zoom_out.bmp.inc"
};
constexpr std::uint8_t kBanner[] = {
#include "images/banner.bmp.inc"
};
constexpr std::uint8_t kMain[] = {
#include "images/main.ico.inc"
};
constexpr std::uint8_t kText[] = {
#include "images/text.ico.inc"
};

struct Picture {
  int type;
  std::uint32_t id;
  std::span<const std::uint8_t> bytes;
};

constexpr Picture kPictures[] = {
    {kResourceBitmap, kBitmapOpen, kOpen},
    {kResourceBitmap, kBitmapHelp, kHelp},
    {kResourceBitmap, kBitmapOrganizer, kOrganizer},
    {kResourceBitmap, kBitmapZoomIn, kZoomIn},
    {kResourceBitmap, kBitmapZoomOut, kZoomOut},
    {kResourceBitmap, kBitmapBanner, kBanner},
    {kResourceIcon, kIconMain, kMain},
    {kResourceIcon, kIconText, kText},
};

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

std::span<const std::uint8_t> builtInPicture(int type, std::uint32_t id) {
  const auto* const found = std::find_if(
      std::begin(kPictures), std::end(kPictures),
      [&](const Picture& picture) { return picture.type == type && picture.id == id; });
  return found == std::end(kPictures) ? std::span<const std::uint8_t>() : found->bytes;
}

const AcceleratorRow* acceleratorResource(int id) {
  return id == kAcceleratorsMain ? kMainAccelerators : nullptr;
}

const void* builtInResource(int type, std::uint32_t id) {
  switch (type) {
    case kResourceBitmap:
    case kResourceIcon: {
      const auto bytes = builtInPicture(type, id);
      return bytes.empty() ? nullptr : bytes.data();
    }
    case kResourceDialog:
      return findDialogResource(id);
    case kResourceAccelerators:
      return id > static_cast<std::uint32_t>(std::numeric_limits<int>::max())
                 ? nullptr
                 : acceleratorResource(static_cast<int>(id));
    default:
      return nullptr;
  }
}
