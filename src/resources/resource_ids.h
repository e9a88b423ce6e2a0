#pragma once

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
