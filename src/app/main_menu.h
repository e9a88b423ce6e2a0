#pragma once

#include <array>
#include <memory>
#include <span>

class zMenu;

/// The main window's menus: which items they have, what their labels are, and what the status line
/// says about them.

/// The pulldowns in their order on the bar.
enum MainPulldown : int { kFileMenu = 0, kViewMenu, kButtonsMenu, kHelpMenu, kPulldownCount };

/// One row of a pulldown; a separator has no label.
struct MenuRow {
  MainPulldown menu;
  int id;
  const char* label;       ///< with the mnemonic's "&", and a tab before the accelerator's name
  const char* statusText;  ///< shown in the status line while the item is armed
};

/// What the status line says of a command; also for commands without a menu item.
struct CommandHelp {
  int id;
  const char* statusText;
};

/// All rows, pulldown by pulldown.
std::span<const MenuRow> mainMenuRows();

/// Status texts of commands that are not in the menus: toolbar and popup menu.
std::span<const CommandHelp> otherCommandHelp();

using MainPulldowns = std::array<std::unique_ptr<zMenu>, kPulldownCount>;

/// Makes the pulldowns, with all their items, and hangs them on the bar.
MainPulldowns buildMainMenu(zMenu& bar);
