#pragma once

#include <array>
#include <memory>
#include <vector>

#include "framework/visuals/status_line.h"
#include "framework/visuals/tool_tip.h"
#include "framework/visuals/toolbar.h"

class zMenu;
class zToolButton;

/// The pulldowns in their order on the bar.
enum MainPulldown : int { kFileMenu = 0, kViewMenu, kButtonsMenu, kHelpMenu, kPulldownCount };

using MainPulldowns = std::array<std::unique_ptr<zMenu>, kPulldownCount>;

/// Makes the pulldowns, with all their items, and hangs them on the bar.
MainPulldowns buildMainMenu(zMenu& bar);

/// What the status line says of the main window's commands while they are armed, also of those
/// without a menu item: toolbar and popup menu.
std::vector<zHelpText> mainCommandHelp();

/// The row of buttons at the top of the main window. Each issues a command of the window, by the
/// road of the menus.
class ClMainToolBar : public zToolbar {
 public:
  /// `flags` is kept and not read.
  ClMainToolBar(zWindow* parent, zSizer* sizer, int flags);

  /// Greys the button of a command or makes it work again; a command without a button is ignored.
  void setPossible(int command, bool possible);

 private:
  [[maybe_unused]] int flags;
  std::unique_ptr<zToolTipCtrl> toolTips;
  std::vector<zToolButton*> buttons;  ///< children, in the order of the table
};

/// The height that the toolbar needs, in pixels; it stays when the bar is hidden. The popup menus
/// of the button groups are placed by it.
extern int g_ToolBarHeight;
