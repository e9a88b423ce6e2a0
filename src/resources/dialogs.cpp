// The dialogs of the button set. The order of the records is the order of the Tab key.

#include "resources/dialogs.h"

#include <algorithm>
#include <array>

#include "resources/styles.h"

namespace {

constexpr std::uint32_t kDialogStyle = kStyleDialog;
constexpr std::uint32_t kPush = kStyleControlStop;
constexpr std::uint32_t kDefaultPush = kStyleControlStop | kButtonDefault;
constexpr std::uint32_t kEditStyle = kStyleControlStop | kStyleBorder | kEditFollowsAcross;
constexpr std::uint32_t kLabel = kStyleControl;
constexpr std::uint32_t kCentredLabel = kStyleControl | kStaticCentredSubtype;
constexpr std::uint32_t kSingleList =
    kStyleControlStop | kStyleBorder | kStyleBothScrolls | kListNotifies;
constexpr std::uint32_t kMultiList = kStyleControlStop | kStyleBorder | kStyleBothScrolls |
                                     kListNotifies | kListMultiple | kListExtended;
constexpr std::uint32_t kButtonWidth = 50;
constexpr std::uint32_t kButtonHeight = 15;

constexpr ControlRecord button(std::uint32_t id, const char* text, std::uint32_t style,
                               std::uint32_t x, std::uint32_t y,
                               std::uint32_t width = kButtonWidth) {
  return {kControlButton, 0, id, text, style, x, y, width, kButtonHeight};
}

constexpr ControlRecord edit(std::uint32_t id, std::uint32_t x, std::uint32_t y,
                             std::uint32_t width) {
  constexpr std::uint32_t kEditHeight = 12;
  return {kControlEdit, 0, id, "", kEditStyle, x, y, width, kEditHeight};
}

constexpr ControlRecord label(const char* text, std::uint32_t x, std::uint32_t y,
                              std::uint32_t width, std::uint32_t height) {
  return {kControlStaticText, 0, kNoControlId, text, kLabel, x, y, width, height};
}

constexpr ControlRecord list(std::uint32_t style) {
  return {kControlListBox, 0, kDialogList, "", style, 17, 25, 115, 100};
}

constexpr ControlRecord kSelectButton[] = {
    button(kDialogOk, "Edit", kDefaultPush, 17, 143),
    button(kDialogCancel, "Cancel", kPush, 84, 143),
    label("Select a button to edit:", 17, 9, 81, 8),
    list(kSingleList),
};

constexpr ControlRecord kEditButton[] = {
    edit(kDialogFirstEdit, 51, 9, 137),
    edit(kDialogSecondEdit, 51, 28, 137),
    button(kDialogOk, "OK", kDefaultPush, 40, 59),
    button(kDialogCancel, "Cancel", kPush, 112, 59),
    label("Label:", 11, 9, 26, 12),
    label("Definition:", 11, 29, 35, 10),
};

constexpr ControlRecord kAddButton[] = {
    edit(kDialogFirstEdit, 51, 9, 138),
    edit(kDialogSecondEdit, 51, 28, 138),
    button(kDialogOk, "OK", kDefaultPush, 12, 59),
    button(kDialogApply, "Apply", kPush, 75, 59),
    button(kDialogCancel, "Cancel", kPush, 139, 59),
    label("Label:", 11, 9, 26, 12),
    label("Definition:", 11, 29, 35, 10),
};

constexpr ControlRecord kRenameGroup[] = {
    edit(kDialogFirstEdit, 59, 10, 104),
    button(kDialogOk, "OK", kDefaultPush, 24, 41),
    button(kDialogCancel, "Cancel", kPush, 100, 41),
    label("Group name:", 10, 11, 47, 12),
};

constexpr ControlRecord kAddGroup[] = {
    edit(kDialogFirstEdit, 59, 10, 143),          button(kDialogOk, "OK", kDefaultPush, 17, 41),
    button(kDialogApply, "Apply", kPush, 81, 41), button(kDialogCancel, "Cancel", kPush, 145, 41),
    label("Group name:", 10, 11, 47, 12),
};

constexpr ControlRecord kDeleteButton[] = {
    button(kDialogOk, "OK", kDefaultPush, 17, 140),
    button(kDialogCancel, "Cancel", kPush, 82, 140),
    label("Select button(s) to delete:", 17, 9, 91, 8),
    list(kMultiList),
};

constexpr ControlRecord kSaveChanges[] = {
    button(kDialogSave, "Save", kDefaultPush, 14, 41, 51),
    button(kDialogDiscard, "Discard", kPush, 78, 41),
    button(kDialogCancel, "Cancel", kPush, 140, 41),
    {kControlStaticText, 0, kDialogText, "Save changes to command set?", kCentredLabel, 44, 9, 117,
     8},
};

constexpr ControlRecord kMaximumLines[] = {
    button(kDialogOk, "OK", kDefaultPush, 40, 41),
    button(kDialogCancel, "Cancel", kPush, 110, 41),
    edit(kDialogFirstEdit, 90, 10, 98),
    label("max. lines ( > 100)", 10, 11, 78, 12),
};

template <std::size_t count>
constexpr DialogResource dialog(std::uint32_t id, std::uint32_t cx, std::uint32_t cy,
                                const ControlRecord (&items)[count]) {
  constexpr std::uint32_t kFontSize = 11;
  return {items, count, id, kDialogStyle, 0, 0, cx, cy, nullptr, "Helv", kFontSize, kNoDialogIcon};
}

constexpr std::array kDialogs = {
    dialog(kDialogSelectButton, 152, 166, kSelectButton),
    dialog(kDialogEditButton, 202, 82, kEditButton),
    dialog(kDialogAddButton, 204, 81, kAddButton),
    dialog(kDialogRenameGroup, 178, 63, kRenameGroup),
    dialog(kDialogAddGroup, 218, 65, kAddGroup),
    dialog(kDialogDeleteButton, 153, 164, kDeleteButton),
    dialog(kDialogSaveChanges, 205, 65, kSaveChanges),
    dialog(kDialogMaximumLines, 200, 64, kMaximumLines),
};

constexpr bool hasUniqueIds(const DialogResource& dialog) {
  for (std::size_t i = 0; i < dialog.itemCount; ++i) {
    for (std::size_t j = i + 1; j < dialog.itemCount; ++j) {
      if (dialog.items[i].id != kNoControlId && dialog.items[i].id == dialog.items[j].id) {
        return false;
      }
    }
  }
  return true;
}

constexpr bool holdsItsControls(const DialogResource& dialog) {
  return std::all_of(dialog.items, dialog.items + dialog.itemCount,
                     [&dialog](const ControlRecord& item) {
                       return item.x + item.cx <= dialog.cx && item.y + item.cy <= dialog.cy;
                     });
}

constexpr bool hasCancel(const DialogResource& dialog) {
  return std::any_of(dialog.items, dialog.items + dialog.itemCount,
                     [](const ControlRecord& item) { return item.id == kDialogCancel; });
}

static_assert(std::all_of(kDialogs.begin(), kDialogs.end(), hasUniqueIds));
static_assert(std::all_of(kDialogs.begin(), kDialogs.end(), holdsItsControls));
static_assert(std::all_of(kDialogs.begin(), kDialogs.end(), hasCancel));

}  // namespace

const DialogResource* findDialogResource(std::uint32_t id) {
  const auto* found = std::find_if(kDialogs.begin(), kDialogs.end(),
                                   [id](const DialogResource& dialog) { return dialog.id == id; });
  return found == kDialogs.end() ? nullptr : found;
}
