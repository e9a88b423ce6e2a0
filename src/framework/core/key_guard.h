#pragma once

#include "framework/draw/xtfwd.h"

/// Says, for its own lifetime, that what comes up on the screen is not the user's doing: he may be
/// typing something else at that moment.
class zUnaskedScope {
 public:
  zUnaskedScope();
  zUnaskedScope(const zUnaskedScope&) = delete;
  zUnaskedScope& operator=(const zUnaskedScope&) = delete;
  ~zUnaskedScope();

  static bool isActive();
};

/// Keeps keys from answering a dialog that the user cannot have seen yet: those typed before its
/// shell has had the focus for g_XSettings.promptKeyDelay milliseconds, by the time at which they
/// were typed, however late they are handled.
///
/// Characters and BackSpace go on to the text that had the focus when the dialog came up, and so
/// does Return if that is the main window's: commands typed ahead must not run into one. All other
/// keys are dropped; Return in the text of another dialog would answer that one.
class ziKeyGuard {
 public:
  ziKeyGuard() = default;
  ziKeyGuard(const ziKeyGuard&) = delete;
  ziKeyGuard& operator=(const ziKeyGuard&) = delete;
  ~ziKeyGuard() { stop(); }

  /// Watches over `shell`, which is about to come up, until stop(); the shell must live as long.
  void start(Widget shell);
  void stop();

 private:
  /// Takes the place of the toolkit's dispatcher of key presses.
  static char dispatchKey(XEvent* event) noexcept;
  void shellEvent(XEvent& event);
  void textGone() { typedInto = nullptr; }
  bool holds(const XEvent& key);
  void handOn(const XEvent& key) const;

  Widget watched = nullptr;
  Widget typedInto = nullptr;  ///< gets what is typed meanwhile; null for nothing
  bool hasFocus = false;
  unsigned long focusTime = 0;  ///< by the server's clock
  bool isOpen = false;          ///< from now on all keys are the dialog's
};
