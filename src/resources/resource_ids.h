#pragma once

/// Types of resources, in the built-in table and in resource files.
enum ResourceType : int {
  kResourceCursor = 1,  ///< CUR data
  kResourceBitmap = 2,  ///< BMP data
  kResourceIcon = 3,    ///< ICO data
  kResourceMenu = 4,
  kResourceDialog = 5,
  kResourceString = 6,
  kResourceAccelerators = 9,
  kResourceRaw = 10,
};

/// Ids of the program's resources.
enum ResourceId : int {
  kIconMain = 99,
  kIconText = 100,
  kStringTitle = 500,
  kAcceleratorsMain = 1800,
  kBitmapOpen = 2100,
  kBitmapHelp = 2101,
  kBitmapOrganizer = 2102,
  kBitmapZoomIn = 2103,
  kBitmapZoomOut = 2104,
  kBitmapBanner = 2150,
};

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

  kCommandLoadButtons = 1201,
  kCommandAppendButtons = 1203,
  kCommandSaveButtons = 1204,
  kCommandSaveButtonsAs = 1205,
  kCommandExpandGroups = 1206,
  kCommandCollapseGroups = 1207,
  kCommandAddGroup = 1208,

  kCommandHelpTessil = 1301,
  kCommandHelpUi = 1302,
  kCommandHelpKorvane = 1303,
  kCommandHelpCommands = 1304,
  kCommandAbout = 1305,

  kCommandToggleToolBar = 1900,
  kCommandToggleStatusLine = 1901,
  kCommandOrganizer = 1902,
  kCommandZoomIn = 1903,
  kCommandZoomOut = 1904,

  // The popup menu of the button pane.
  kCommandPopupTitle = 500,
  kCommandAddButton = 2200,
  kCommandEditButton = 2201,
  kCommandDeleteButton = 2202,
  kCommandRenameGroup = 2203,
  kCommandDeleteGroup = 2204,
};
