#include "app/main_bars.h"

#include <iterator>

#include "framework/draw/measure.h"
#include "framework/draw/pictures.h"
#include "framework/menus/menu.h"
#include "framework/visuals/toolbar.h"
#include "resources/resource_ids.h"

int g_ToolBarHeight = 0;

namespace {

/// One row of a pulldown; a separator has no label.
struct MenuRow {
  MainPulldown menu;
  int id;
  const char* label;       ///< with the mnemonic's "&", and a tab before the accelerator's name
  const char* statusText;  ///< shown in the status line while the item is armed
};

constexpr MenuRow separator(MainPulldown menu) {
  return {menu, 0, nullptr, nullptr};
}

constexpr MenuRow kRows[] = {
    {kFileMenu, kCommandOpen, "&Open...\tCtrl+O", "Open an SDL-System (Symbol File)"},
    {kFileMenu, kCommandSetDirectory, "Set &Directory", "Select a new target directory"},
    separator(kFileMenu),
    {kFileMenu, kCommandExit, "E&xit\tCtrl+Q", "Exit the application"},

    {kViewMenu, kCommandFind, "&Find ...", "Search for text"},
    {kViewMenu, kCommandFindNext, "Find next\tF3", "Search for next text"},
    {kViewMenu, kCommandFindSelection, "Find &selection", "Search for the selected text"},
    separator(kViewMenu),
    {kViewMenu, kCommandCopy, "&Copy from text area\tCtrl+C",
     "Place a copy of the selected text into the clipboard"},
    {kViewMenu, kCommandPaste, "&Paste into command line\tCtrl+V",
     "Insert text from the clipboard into the command line"},
    separator(kViewMenu),
    {kViewMenu, kCommandLineNumbering, "&Line numbering", "Show line numbering"},
    separator(kViewMenu),
    {kViewMenu, kCommandClearText, "Clear &text area", "Clear the Text Area"},

    {kButtonsMenu, kCommandLoadButtons, "&Load...",
     "Clear the current button definition and load new definitions from a file"},
    {kButtonsMenu, kCommandAppendButtons, "A&ppend...",
     "Append button definition from a file to current definition"},
    {kButtonsMenu, kCommandSaveButtons, "&Save", "Save current button definition"},
    {kButtonsMenu, kCommandSaveButtonsAs, "Save &As...",
     "Save current button definition to a file"},
    separator(kButtonsMenu),
    {kButtonsMenu, kCommandExpandGroups, "&Expand Groups", "Expand all button groups"},
    {kButtonsMenu, kCommandCollapseGroups, "&Collapse Groups", "Collapse all button groups"},
    separator(kButtonsMenu),
    {kButtonsMenu, kCommandAddGroup, "Add &Group...", "Add a new button group"},

    {kHelpMenu, kCommandHelpTessil, "On T&essil", "Show help on Tessil"},
    {kHelpMenu, kCommandHelpUi, "On &UI\tCtrl+H", "Show help on Korvane User Interface"},
    {kHelpMenu, kCommandHelpKorvane, "On &Korvane", "Show help on Korvane"},
    {kHelpMenu, kCommandHelpCommands, "On Korvane &Commands", "Show help on Korvane Commands"},
    separator(kHelpMenu),
    {kHelpMenu, kCommandAbout, "&About UI...", "About Korvane UI"},
};

constexpr zHelpText kOtherHelp[] = {
    {kCommandOrganizer, "Show the Organizer"},
    {kCommandZoomIn, "Zoom in text area"},
    {kCommandZoomOut, "Zoom out text area"},
    {kCommandPopupTitle, ""},
    {kCommandAddButton, "Add a new button to this button group"},
    {kCommandEditButton, "Edit a button of this button group"},
    {kCommandDeleteButton, "Delete a button of this button group"},
    {kCommandRenameGroup, "Rename this button group"},
    {kCommandDeleteGroup, "Delete this button group"},
};

constexpr const char* kPulldownLabels[kPulldownCount] = {"&File", "&View", "&Buttons", "&Help"};

constexpr int kBarStyle = kToolbarEdgeByGravity | kToolbarLineTop | kToolbarLineBottom;
constexpr int kButtonTop = 4;  // pixels, as all of the places below
constexpr zDimension kButtonSize = {24, 22};
constexpr int kUnitsBelowButtons = 5;

struct ToolButtonRow {
  int left;
  std::uint32_t picture;
  int command;
};

constexpr ToolButtonRow kToolButtons[] = {
    {5, kBitmapOpen, kCommandOpen},      {35, kBitmapZoomOut, kCommandZoomOut},
    {60, kBitmapZoomIn, kCommandZoomIn}, {90, kBitmapOrganizer, kCommandOrganizer},
    {120, kBitmapHelp, kCommandHelpUi},
};

constexpr zToolTipText kTips[] = {
    {kCommandOpen, "Open an SDL-System (Symbol-file)"},
    {kCommandHelpUi, "Help on Korvane user interface"},
    {kCommandOrganizer, "Organizer"},
    {kCommandZoomIn, "Zoom in"},
    {kCommandZoomOut, "Zoom out"},
    {0, nullptr},
};

}  // namespace

MainPulldowns buildMainMenu(zMenu& bar) {
  MainPulldowns pulldowns;
  for (auto& pulldown : pulldowns) {
    pulldown = std::make_unique<zMenu>();
  }
  for (const MenuRow& row : kRows) {
    zMenu& pulldown = *pulldowns[row.menu];
    if (row.label == nullptr) {
      pulldown.appendSeparator();
    } else {
      pulldown.appendItem(row.id, row.label, 0);
    }
  }
  for (int position = 0; position < kPulldownCount; ++position) {
    bar.addSubMenu(pulldowns[position].get(), kPulldownLabels[position], position);
  }
  return pulldowns;
}

std::vector<zHelpText> mainCommandHelp() {
  std::vector<zHelpText> help;
  for (const MenuRow& row : kRows) {
    if (row.label != nullptr) {
      help.push_back({row.id, row.statusText});
    }
  }
  help.insert(help.end(), std::begin(kOtherHelp), std::end(kOtherHelp));
  return help;
}

ClMainToolBar::ClMainToolBar(zWindow* parent, zSizer* sizer, int barFlags)
    : zToolbar(parent, sizer, kBarStyle, nullptr),
      flags(barFlags),
      toolTips(std::make_unique<zToolTipCtrl>(parent)) {
  toolTips->setTable(kTips);
  for (const ToolButtonRow& row : kToolButtons) {
    auto* place = new zSizer({row.left, kButtonTop}, kButtonSize, this->sizer());
    auto* button = new zToolButton(this, place, 0, row.command, new zBitmap(zResId(row.picture)));
    button->show();
    toolTips->add(button);
    buttons.push_back(button);
  }
  g_ToolBarHeight = kButtonSize.height + zDialogUnit(0, kUnitsBelowButtons).height();
}

void ClMainToolBar::setPossible(int command, bool possible) {
  for (zToolButton* button : buttons) {
    if (button->id() == command && button->isEnabled() != possible) {
      possible ? button->enable() : button->disable();
    }
  }
}
