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
