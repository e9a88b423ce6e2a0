#pragma once

/// A control with a list that drops down over other windows. At most one is open in the program.
class ziDropDown {
 public:
  virtual ~ziDropDown() = default;
  /// Clears openCombo before it notifies anybody.
  virtual void hideDropDown() = 0;
};

/// The drop-down that is open now, or null. Whoever opens one closes the other first.
extern ziDropDown* openCombo;

/// Hides the open drop-down, if there is one. Another may be open afterwards: its owner is told.
void closeOpenDropDown();
