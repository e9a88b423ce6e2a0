#pragma once

#include <cstdint>

/// Window style bits (the Win32 values). The low four bits are a subtype of a control.
enum zStyle : std::uint32_t {
  kStyleSubtypeMask = 0x0000000F,
  kStyleMaximizeBox = 0x00010000,
  kStyleTabStop = 0x00010000,  ///< on a pane or control: takes part in keyboard traversal
  kStyleMinimizeBox = 0x00020000,
  kStyleResizeFrame = 0x00040000,
  kStyleSystemMenu = 0x00080000,
  kStyleHorzScroll = 0x00100000,
  kStyleVertScroll = 0x00200000,
  kStyleBorder = 0x00800000,
  kStyleTitleBar = 0x00C00000,  ///< both bits required
  kStyleColourFromParent = 0x02000000,
  kStyleEveryWindow = 0x06000000,  ///< what every window's constructor adds
  kStyleDisabled = 0x08000000,
  kStyleVisible = 0x10000000,
  kStyleChild = 0x40000000,
  kStyleAbsolute = 0x80000000,  ///< the position stays as the screen gave it
};

/// Show states (the Win32 show commands).
enum zShowState : int {
  kShowHide = 0,
  kShowNormal = 1,
  kShowMinimized = 2,
  kShowMaximized = 3,
  kShowMinimize = 6,
  kShowMinNoActive = 7,
};
