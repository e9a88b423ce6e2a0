#pragma once

#include <span>

#include "framework/visuals/status_line.h"
#include "support/rwc_string.h"

class zMenu;
class zWindow;

/// What the button set asks of the main window, which implements it and outlives the set. The log
/// and the command line it finds by itself.
class ziButtonHost {
 public:
  ziButtonHost() = default;
  ziButtonHost(const ziButtonHost&) = delete;
  ziButtonHost& operator=(const ziButtonHost&) = delete;
  virtual ~ziButtonHost() = default;

  /// The main window: parent of dialogs and boxes, owner of the groups' popup menu, and the one
  /// whose font measures the labels.
  virtual zWindow& window() = 0;
  /// The menu bar: the set's menus go in from position 3 on.
  virtual zMenu& mainMenu() = 0;
  /// Goes in front of the titles of dialogs and boxes.
  virtual RWCString applicationTitle() = 0;
  /// What the toolbar adds to the distance of the groups from the upper edge of the window, pixels.
  virtual int toolBarHeight() = 0;

  /// Cuts a line into commands and sends them.
  virtual void executeCommandLine(const RWCString& line) = 0;
  /// Shows a text in the first field of the status line.
  virtual void showStatus(const RWCString& text) = 0;
  /// The help of the set's menu entries, in their order, to be shown behind that of the main
  /// window's own commands. The rows' texts live until the next call; the span doesn't.
  virtual void setMenuHelp(std::span<const zHelpText> rows) = 0;
};
