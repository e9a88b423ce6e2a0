#pragma once

#include <memory>

#include "framework/core/pane.h"
#include "framework/draw/icon.h"

/// Draws an icon at its upper left corner; empty until it is given one.
class IconPane : public zPane {
 public:
  IconPane(zWindow* parent, zSizer* sizer, std::uint32_t style, int id)
      : zPane(parent, sizer, style, id) {}

  /// Replaces the icon, null for none, and asks for a repaint.
  void setIcon(std::unique_ptr<zIcon> newIcon);

  int draw(zEvent* event) override;

 private:
  std::unique_ptr<zIcon> icon;
};
