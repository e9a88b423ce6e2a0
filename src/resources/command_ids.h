#pragma once

/// Ids of the main window's commands, as menus, the toolbar and accelerators send them.
enum CommandId : int {
  kCommandOpen = 1001,
  kCommandSetDirectory = 1002,
  kCommandExit = 1003,
  kCommandFind = 1101,
  kCommandFindNext = 1102,
  kCommandFindSelection = 1103,
  kCommandCopy = 1104,
  kCommandPaste = 1105,
  kCommandLineNumbering = 1106,
  kCommandClearText = 1107,
  kCommandHelpTessil = 1301,
  kCommandHelpUi = 1302,
  kCommandToggleToolBar = 1900,
  kCommandToggleStatusLine = 1901,
  kCommandOrganizer = 1902,
  kCommandZoomIn = 1903,
  kCommandZoomOut = 1904,
};
