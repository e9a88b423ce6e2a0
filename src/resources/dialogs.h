#pragma once

#include <cstddef>
#include <cstdint>

/// Dialog resources: the contents of dialogs as data. All measures are dialog units.

/// Ids of the dialogs.
enum DialogId : std::uint32_t {
  kDialogSelectButton = 503,
  kDialogEditButton = 504,
  kDialogAddButton = 505,
  kDialogRenameGroup = 506,
  kDialogAddGroup = 507,
  kDialogDeleteButton = 517,
  kDialogSaveChanges = 519,
  kDialogMaximumLines = 2304,
};

/// Ids of the controls in them.
enum DialogControlId : std::uint32_t {
  kDialogOk = 1,
  kDialogCancel = 2,
  kDialogList = 100,
  kDialogFirstEdit = 101,
  kDialogSecondEdit = 102,
  kDialogApply = 104,
  kDialogText = 106,
  kDialogSave = 111,
  kDialogDiscard = 112,
};

/// Class of a control in a dialog resource.
enum ControlClass : std::uint32_t {
  kControlButton = 0x80,  ///< the kind of button by the style's low four bits
  kControlEdit = 0x81,
  kControlStaticText = 0x82,
  kControlListBox = 0x83,
  kControlScrollBar = 0x84,
  kControlComboBox = 0x85,
  kControlImageButton = 0x86,
};

/// Id of a control that nobody asks for.
inline constexpr std::uint32_t kNoControlId = 0xFFFFFFFF;
/// A dialog without an icon.
inline constexpr std::uint32_t kNoDialogIcon = 0xFFFFFFFF;

struct ControlRecord {
  std::uint32_t controlClass;
  std::uint32_t reserved;
  std::uint32_t id;
  const char* text;
  std::uint32_t style;
  std::uint32_t x, y, cx, cy;
};

struct DialogResource {
  const ControlRecord* items;
  std::size_t itemCount;
  std::uint32_t id;
  std::uint32_t style;
  std::uint32_t x, y, cx, cy;
  const char* caption;
  const char* fontName;
  std::uint32_t fontSize;  ///< points
  std::uint32_t icon;
};

/// The dialog resource `id`; null when there is none.
const DialogResource* findDialogResource(std::uint32_t id);
