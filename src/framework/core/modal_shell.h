#pragma once

#include "framework/core/key_guard.h"

/// The shell of a modal dialog, box or form while it is on the screen. What the user did not ask
/// for guards its keys, and where the main window is an icon it brings that back: window managers
/// hide the dialogs of an icon, and the program behind the question waits for its answer.
class ziModalShell {
 public:
  ziModalShell() = default;
  ziModalShell(const ziModalShell&) = delete;
  ziModalShell& operator=(const ziModalShell&) = delete;
  ~ziModalShell() { down(); }

  /// To be called right before `shell` comes up. Its destruction counts as down().
  void up(Widget shell);
  void down();
  bool isUp() const { return shell != nullptr; }

  /// Puts the dialog in front of the others and gives it the focus.
  void raise() const;
  /// The same for the dialog that came up last, if there is any.
  static void raiseNewest();

 private:
  void focusChanged(XEvent& event);
  void callUser();

  Widget shell = nullptr;
  bool isCalling = false;  ///< the main window asks for attention
  ziKeyGuard keyGuard;
};
