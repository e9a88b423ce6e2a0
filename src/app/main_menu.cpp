#include "app/main_menu.h"

#include "framework/menus/menu.h"
#include "resources/command_ids.h"

namespace {

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

constexpr CommandHelp kOtherHelp[] = {
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

}  // namespace

std::span<const MenuRow> mainMenuRows() {
  return kRows;
}

std::span<const CommandHelp> otherCommandHelp() {
  return kOtherHelp;
}

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
