#pragma once

/// Ids of the program's resources.
enum ResourceId : int {
  kIconMain = 99,
  kStringTitle = 500,
  kAcceleratorsMain = 1800,
};
