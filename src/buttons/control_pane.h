#pragma once

#include <memory>

#include "framework/controls/button.h"
#include "framework/controls/scroll_bar.h"
#include "framework/core/pane.h"

class GroupPane;
class ziButtonHost;
class zGravSizer;
class zScrollBarCtrl;

/// The sunken frame round the groups.
class Control3dPanel : public zPanel3d {
 public:
  explicit Control3dPanel(zWindow* parent, zSizer* sizer);
};

/// The part of the window in which the groups are seen.
class MainPane : public zPane {
 public:
  MainPane(zWindow* parent, zSizer* sizer, zScrollBarCtrl& vertical, zScrollBarCtrl& horizontal,
           ziButtonHost& host);

  GroupPane& groupPane() { return *groups; }

 private:
  GroupPane* groups;  ///< owned as a child
};

/// Moves the groups up and down as its bar says, and gives the focus back to the command line.
class VertControlScroller : public zControlScroller {
 public:
  explicit VertControlScroller(zScrollBarCtrl& bar);
  int vertThumbPosition(zEvent* event) override;
};

/// The same from side to side.
class HorzControlScroller : public zControlScroller {
 public:
  explicit HorzControlScroller(zScrollBarCtrl& bar);
  int horzThumbPosition(zEvent* event) override;
};

/// The button area of the main window: the groups and the bars that scroll them. Making it makes
/// theGroupPane.
class ControlPane : public zPane {
 public:
  /// `host` must outlive the pane.
  ControlPane(zWindow* parent, zSizer* sizer, ziButtonHost& host);
  ~ControlPane() override;

  int size(zEvent* event) override;

 private:
  void createBars();
  void placeGroups();

  std::unique_ptr<zGravSizer> bottomStrip;
  std::unique_ptr<zGravSizer> rightStrip;
  zScrollBarCtrl* vertical = nullptr;
  zScrollBarCtrl* horizontal = nullptr;
  std::unique_ptr<VertControlScroller> vertScroller;
  std::unique_ptr<HorzControlScroller> horzScroller;
  MainPane* mainPane = nullptr;
  Control3dPanel* panel = nullptr;
};
