#pragma once

// Part of the framework's interface that this program does not use; compiled, its behaviour is not
// under test.

#include "framework/controls/scroll_bar.h"

/// The vertical bar of a window, at its right edge; its position is the window's vertBar(). A
/// window has one at most.
class zScrollBarVert : public zScrollBarBase {
 public:
  static constexpr int kClassNumber = kClassScrollBarVert;
  explicit zScrollBarVert(zWindow* window, int id = -1);
};

/// The horizontal bar of a window, at its bottom edge; its position is the window's horzBar(). A
/// window has one at most.
class zScrollBarHorz : public zScrollBarBase {
 public:
  static constexpr int kClassNumber = kClassScrollBarHorz;
  explicit zScrollBarHorz(zWindow* window, int id = -1);
};
