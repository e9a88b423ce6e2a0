#pragma once

#include "framework/core/pane.h"

// Part of the framework's interface that this program does not use: compiled, its behaviour is not
// under test.

/// A grey pane that reports to its parent, used by the window furniture.
class zPaneControl : public zPane {
 public:
  zPaneControl(zWindow* parent, zSizer* sizer, std::uint32_t style, int id,
               Create create = kCreateNow);

  int handle(zEvent* event) override;
  /// Sends the parent a command with this pane's id and `code`.
  void notifyParent(int code);
  virtual int enableChanged(int enabled);
};
