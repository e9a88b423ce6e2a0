#pragma once

#include "framework/core/window.h"

/// A child window: its widget lies inside its parent's.
class zChildWin : public zWindow {
 public:
  static constexpr int kClassNumber = kClassChildWin;

  /// Makes no widget. With no sizer, the window follows its parent's size.
  zChildWin(zWindow* parent, zSizer* sizer, std::uint32_t style);

  int character(zEvent* event) override;
  void show(int state = kShowNormal) override;

  virtual void createWidgets();
};
